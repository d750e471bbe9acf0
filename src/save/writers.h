#pragma once

#include "platform/finder_info.h"
#include "save/file_target.h"
#include "save/mail_saving.h"
#include "save/mbox_target.h"
#include "text/message_text.h"

/// One writer: how the mail of one kind of store goes into one bundle.
struct Writer {
    std::atomic<bool> *store; ///< store kind flag
    const Bundle *bundle;
    void (QMailSaving::*reader)(); ///< goes through the ticked folders
    TargetRule target;
    const FinderCodes *codes;        ///< of a mailbox
    const char *separator = nullptr; ///< before each message, no line feed; null for a mailbox and .olm
    LineRule lines = LineRule::Stay; ///< what happens to the lines of a message file
};

// clang-format off
inline constexpr char bareFrom[] = "From ???@???";
inline constexpr char datedFrom[] = "From - Wed Nov 12 14:38:04 2014";
inline constexpr Writer
    // writer                      store                  bundle          reader                                          target                codes           separator                                 lines
    writeMail                     {&bEmlxFileFound,       &outlookBundle, &QMailSaving::FileSearch,                       emlxToOutlook,        &outlookMailbox, "From - &&&&&@@@####",                   LineRule::Filtered},
    writeMailForMailMate          {&bEmlFileFound,        &outlookBundle, &QMailSaving::FileSearchForEmlOutlook,          mailMateToOutlook,    &outlookMailbox, bareFrom,                                LineRule::Stay},
    writeMailForMailMateAppleMail {&bEmlFileFound,        &appleBundle,   &QMailSaving::FileSearchForEmlAppleMail,        mailMateToAppleMail,  &appleMailbox,   datedFrom,                               LineRule::Stay},
    writeMailForOutSpring         {&bemlandfemlfileFound, &outlookBundle, &QMailSaving::FileSearchForEmlandfEmlOutlook,   outspringToOutlook,   &outlookMailbox, bareFrom,                                LineRule::Filtered},
    writeMailForOutSpringAppleMail{&bemlandfemlfileFound, &appleBundle,   &QMailSaving::FileSearchForEmlandfEmlAppleMail, outspringToAppleMail, &appleMailbox,   datedFrom,                               LineRule::Filtered},
    writeMailForOperaMailOutlook  {&bMbsFileFound,        &outlookBundle, &QMailSaving::FileSearchForMbsOutlook,          operaToOutlook,       &outlookMailbox, "From ???@??? Fri Dec 19 10:37:38 2014", LineRule::FromColonQuoted},
    writeMailForOperaAppleMail    {&bMbsFileFound,        &appleBundle,   &QMailSaving::FileSearchForMbsAppleMail,        operaToAppleMail,     &appleMailbox,   datedFrom,                               LineRule::Stay},
    writeMailForPostBoxOutlook    {&bMboxFileFound,       &outlookBundle, &QMailSaving::PostBoxFileSearch,                mboxToOutlook,        &outlookMailbox},
    writeMailForPostBoxAppleMail  {&bMboxFileFound,       &appleBundle,   &QMailSaving::PostBoxFileSearch,                mboxToAppleMail,      &appleMailbox},
    writeOlmMail                  {&bOlmFileFound,        &appleBundle,   &QMailSaving::OnMailSaving,                     olmToAppleMail,       &outlookMailbox};
// clang-format on

inline constexpr const Writer *writers[] = {
    &writeMail,
    &writeMailForMailMate,
    &writeMailForMailMateAppleMail,
    &writeMailForOutSpring,
    &writeMailForOutSpringAppleMail,
    &writeMailForOperaMailOutlook,
    &writeMailForOperaAppleMail,
    &writeMailForPostBoxOutlook,
    &writeMailForPostBoxAppleMail,
    &writeOlmMail,
};

/// The writer of a store (its kind flag) for a bundle, or null.
constexpr const Writer *findWriter(const std::atomic<bool> *store, const Bundle &bundle)
{
    for (const Writer *writer : writers)
        if (writer->store == store && writer->bundle == &bundle)
            return writer;
    return nullptr;
}

/// The writer that the store kind flags and the target flags pick, or null.
const Writer *pickWriter();
