#pragma once

#include <QHash>
#include <QString>
#include <QStringList>

#include <array>
#include <optional>
#include <vector>

// What a save did with each message of the ticked folders. Readers and writers tell it as they go; the window and the
// command line show it. Three words: a message that is "written" stands in a target mailbox, whole, behind a separator
// of its own; one that is "joined" was written without one, so that a reader takes it for a part of the message before;
// one that is "left out" was not written, or not whole.

/// Why a message was left out.
enum class LeftOutReason {
    Unreadable, ///< its file can't be opened, or reading failed, or it is shorter than its own byte count
    Unwritable,
    Vanished,  ///< the scan saw it, the save no longer finds it
    Part,      ///< a part of a partial message could not be read
    TooLarge,  ///< beyond what is put together in memory
    Stopped,   ///< by the user
    OrderMark, ///< a byte order mark before the first "From ": the scan takes the file, the save does not
    NotTaken,  ///< a rule passes the file over in a ticked folder: the news feeds
    NotReached ///< the reader ended before it
};
constexpr int leftOutReasons = 9;

/// How a message that was written differs from its source.
enum class ChangeKind {
    LostCharacters,   ///< characters became "?" that were none
    Latin1,           ///< characters U+0080 to U+00FF became one byte each
    FirstLine,        ///< the dropped first line of a .eml or .mbs file was mail
    Quoted,           ///< lines got ">"
    Tail,             ///< .emlx: bytes inside the message's own byte count were not written
    DroppedHeader,    ///< "Received-Spf:" headers
    EmptyParts,       ///< sections of a partial message whose content was not put back
    NewMessageId,     ///< .olm, as all that follow but the last
    NewDate,          ///< Date headers with the present time
    LostField,        ///< values over their limit
    LostAttachments,  ///< not written
    LostRecipients,   ///< To or Cc lists written empty
    UnreachableParts, ///< attachments with no boundary declared
    CutText           ///< .eml: text behind a quoted XML declaration was not written
};
constexpr int changeKinds = 14;

/// The word in a report's JSON: "order-mark".
const char *nameOf(LeftOutReason reason);
/// The word in a report's JSON: "lostCharacters".
const char *nameOf(ChangeKind kind);

/// A file, or a message where the rest of its file was written, that was left out.
struct LeftOutItem {
    QString path;
    qint64 offset = 0;              ///< bytes, of the message in its file
    std::optional<qint64> messages; ///< nothing where nobody can know
    LeftOutReason reason = LeftOutReason::Unreadable;
    QString text; ///< a sentence with the system's reason, "" where the reason above says it all
};

/// Where a message stands in the store.
struct MessagePlace {
    QString path;
    qint64 offset = 0; ///< bytes, in its file
};

/// One kind of change: how many messages have it, how often in all, and the first one met.
struct ChangeCount {
    qint64 messages = 0;
    qint64 count = 0; ///< what is counted: see ChangeKind
    QString path;
    qint64 offset = 0; ///< bytes, of the message in its file
};

/// What became of a ticked folder.
struct FolderCount {
    qint64 id = 0;
    QString tree; ///< raw names from the top down to the folder, joined by "/"
    qint64 found = 0;
    qint64 written = 0;
    qint64 joined = 0;
    qint64 leftOut = 0;
    qint64 changed = 0;    ///< written or joined, in one or more of the ways of ChangeKind
    QStringList mailboxes; ///< target files, absolute, in the order met
};

/// A target file and what was told of it.
struct TargetCount {
    QString mailbox;             ///< absolute path
    std::vector<qint64> folders; ///< ids of those whose messages went there, in the order met
    qint64 bytes = 0;
    qint64 fromLines = 0; ///< lines that start with "From ": separators and strays
};

/// The account of one save. Filled by the save thread alone, read when it has ended. What is told message by message
/// costs nothing for a message that is written as it was found; items are kept up to a number and counted beyond.
class SaveLedger
{
public:
    static constexpr int mostItems = 1000;

    /// Begins a new account.
    void clear();
    /// What is told from now on belongs to this folder; a folder that is entered again goes on.
    void enterFolder(qint64 folderId);
    /// What is told from now on of written messages, strays and bytes stands in this target file.
    void enterTarget(const QString &mailbox);
    /// The same, and messages of the folder go there.
    void addTarget(const QString &mailbox);
    /// The reader has met messages.
    void addFound(qint64 messages = 1);
    /// Messages that stand whole in a target.
    void addWritten(qint64 messages = 1);
    /// Messages that stand in a target without a separator of their own; `first`: where the first of them lies.
    void addJoined(qint64 messages = 1, const MessagePlace &first = {});
    /// Of the messages found, item.messages were left out. Items of one file that come together and have the same
    /// reason become one.
    void addLeftOut(const LeftOutItem &item);
    /// Messages that were written or joined were changed in this way; path and offset tell where the first of them
    /// stands. None is no change.
    void addChanges(ChangeKind kind, const ChangeCount &changes);
    /// So many messages were changed, each in one or more ways.
    void addChanged(qint64 messages);
    /// Lines of target mailboxes that start with "From " and are no written message's separator; `first`: whose text
    /// they are.
    void addStrays(qint64 lines, const MessagePlace &first = {});
    /// Bytes of target mailboxes.
    void addBytes(qint64 bytes);

    const std::vector<FolderCount> &folders() const { return m_folders; }
    /// All folders together; id, tree and mailboxes are empty.
    const FolderCount &total() const { return m_total; }
    const std::vector<LeftOutItem> &leftOutItems() const { return m_leftOutItems; }
    /// All items that were not kept, as one without a path: their messages, if all numbers are known, and the reason
    /// that most of them have.
    /// Nothing if all were kept.
    std::optional<LeftOutItem> itemsNotKept() const;
    /// Messages left out for a reason, known numbers only.
    qint64 leftOut(LeftOutReason reason) const { return countOf(reason).messages; }
    /// Items of a reason, those without a known number too.
    qint64 itemsLeftOut(LeftOutReason reason) const { return countOf(reason).items; }
    const ChangeCount &change(ChangeKind kind) const { return m_changes[static_cast<size_t>(kind)]; }
    /// In the order met; one with more than one folder is shared.
    const std::vector<TargetCount> &targets() const { return m_targets; }
    /// True if every message was written or joined, but for what a stop, or a rule of the store, leaves out.
    bool isComplete() const;
    /// Lines told by addStrays, and where the first one's message lies.
    qint64 strays() const { return m_strays; }
    const MessagePlace &firstStray() const { return m_firstStray; }
    /// Where the first joined message lies.
    const MessagePlace &firstJoined() const { return m_firstJoined; }
    /// Bytes told by addBytes, all targets together.
    qint64 bytes() const { return m_bytes; }
    /// found = written + joined + left out, in every folder and in total.
    bool addsUp() const;

private:
    struct ReasonCount {
        qint64 items = 0;
        qint64 messages = 0;    ///< where their number is known
        qint64 itemsBeyond = 0; ///< that were not kept
    };

    const ReasonCount &countOf(LeftOutReason reason) const
    {
        return m_leftOutBy[static_cast<size_t>(reason)];
    }
    template <typename Add>
    void add(Add change);
    void addFromLines(qint64 lines);
    LeftOutItem *itemLike(const LeftOutItem &item);

    std::vector<FolderCount> m_folders;
    QHash<qint64, size_t> m_placeOfFolder;
    size_t m_current = 0;
    FolderCount m_total;
    std::vector<LeftOutItem> m_leftOutItems;
    std::array<ReasonCount, leftOutReasons> m_leftOutBy = {};
    std::optional<qint64> m_messagesBeyond =
        0; ///< of the items that were not kept; nothing if one has no number
    std::array<ChangeCount, changeKinds> m_changes;
    std::vector<TargetCount> m_targets;
    QHash<QString, size_t> m_placeOfTarget;
    size_t m_target = 0;
    qint64 m_strays = 0;
    MessagePlace m_firstStray;
    MessagePlace m_firstJoined;
    qint64 m_bytes = 0;
};

/// The account of the save that runs or ran last (writer: the save thread; reset: the start of each save).
inline SaveLedger saveLedger;
