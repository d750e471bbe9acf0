#pragma once

#include "save/mailbox_file.h"
#include "save/message_batch.h"
#include "save/writers.h"
#include "text/from_lines.h"
#include "text/line_reader.h"
#include "text/opera_accounts.h"
#include "text/part_index.h"

#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

/// Saves message files of the selected store into the bundle below saveDir, one after the other. A mailbox stays open
/// while messages go to it; whatever is taken up is written whole.
class FileSaving
{
public:
    /// Lays out the bundle where it has fixed files.
    explicit FileSaving(const Writer &writer, SaveMode mode = SaveMode::Write);

    /// Saves one file; one that the tree doesn't know is only read. False if it, or a part of it, could not be
    /// opened, which is reported and ends the save. What can't be written is reported and lost, and nothing else.
    bool save(ByteSource file);
    /// Nothing is left to be written then, and to be told of what was saved. Messages of another folder come behind.
    void closeMailbox();

    /// For tests: the largest partial message, in bytes, that is put together in memory. The default is beyond any that
    /// exists.
    void setLargestPartial(qint64 bytes) { m_largestPartial = bytes; }

private:
    struct Flaw {
        LeftOutReason reason;
        QString text;
    };

    void beginMessage(const QString &path, qint64 size);
    void leaveOut(LeftOutReason reason, const QString &text = QString()) const;
    LeftOutReason openFailure() const;
    void endMessage(qint64 fromLines);
    void tellChanges(const TextChanges &text);
    bool open(ByteSource file);
    void write(const QString &path, bool hasParts);
    template <typename Take>
    void readText(Take take);
    void checkRead(LeftOutReason reason);
    void openMailbox(const QString &path);
    QString accountOf(const QString &path);
    QString readFolder();
    QStringList partsOf(const QString &path);
    bool readPartial(const QStringList &parts);
    void appendPartial();

    const Writer &m_writer;
    LineReader m_source{LineReader::Mode::Bytes};
    MessageText m_text;
    MailboxFile m_mailbox;
    QString m_folder; ///< what named the mailbox of the message before
    QString m_target; ///< and that mailbox
    std::optional<OperaAccounts> m_accounts;

    qint64 m_largestPartial = qint64(1) << 30;
    std::optional<PartIndex> m_partIndex;
    QStringList m_parts;          ///< what the partial message in work gets back
    std::vector<char> m_partial;  ///< its text without them
    std::vector<qint64> m_places; ///< their places in it

    // The message in work.
    MessagePlace m_place;
    qint64 m_size = 0;          ///< bytes of its file
    bool m_isPartial = false;   ///< a .partial.emlx
    qint64 m_countedEnd = 0;    ///< where its first line says that it ends; 0: not yet read, -1: nothing
    qint64 m_emptyParts = 0;    ///< sections that got no content
    FromLines m_partLines;      ///< of a message with parts
    std::optional<Flaw> m_flaw; ///< the first thing that left it not whole
    MessageBatch m_batch{&saveLedger};
};
