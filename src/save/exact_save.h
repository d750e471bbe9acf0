#pragma once

#include "app/records.h"
#include "platform/byte_source.h"
#include "save/exact_message.h"
#include "save/exact_target.h"
#include "save/message_batch.h"

#include <functional>

class OlmMessages;
struct MailMLRC;

/// Saves exact copies of the ticked folders into a bundle, one source file or .olm message after the other, and keeps
/// the account of it. What is not whole does not stay in the target.
class ExactSaving
{
public:
    /// `goOn`: false stops the copy in work.
    ExactSaving(SaveMode mode, std::function<bool()> goOn);

    /// What is saved from now on belongs to this folder.
    void enterFolder(qint64 folderId);
    /// A mailbox file; `progress` gets per cents of it.
    void saveMailbox(const MailItemNode &mailbox, const std::function<void(int percent)> &progress);
    /// A file with one message, opened ahead.
    void saveMessage(ByteSource source);
    /// A message of the archive: the next of `messages`, whose record this is.
    void saveOlmMessage(const MailMLRC &record, OlmMessages *messages);
    /// Nothing is left to be written then.
    void closeMailbox();

private:
    bool openTarget();
    void tellMailbox(const MailItemNode &mailbox, const ExactMailboxCopy &copy, const ByteSource &source);
    void tellMessage(const ExactMessageCopy &copy, const MessagePlace &place, const QString &sourceError);

    SaveMode m_mode;
    std::function<bool()> m_goOn;
    ExactTargets m_targets;
    MailboxTarget m_place; ///< of the folder; empty until its first message comes
    qint64 m_folder = 0;
    bool m_hasBundle = false;
    MailboxFile m_target;
    MessageBatch m_batch{&saveLedger};
};
