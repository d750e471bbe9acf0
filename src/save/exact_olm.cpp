#include "save/exact_olm.h"

#include "app/problem_log.h"

#include <utility>

namespace
{
constexpr size_t pieceBytes = 256 * 1024;

// Gathers what is composed into the pieces of the queue.
class PieceFiller
{
public:
    explicit PieceFiller(AheadQueue<ComposedPiece> *pieces) : m_pieces(pieces) { begin(); }

    /// Nobody takes the pieces any more.
    bool isStopped() const { return !m_piece; }
    void append(std::string_view bytes)
    {
        if (m_piece)
            m_piece->bytes.append(bytes);
        if (m_piece && m_piece->bytes.size() >= pieceBytes)
            give();
    }
    void endMessage(const ComposedMessage &end)
    {
        if (!m_piece)
            return;
        m_piece->end = end;
        give();
    }

private:
    void give()
    {
        m_pieces->give();
        begin();
    }
    void begin()
    {
        m_piece = m_pieces->toFill();
        if (!m_piece)
            return;
        m_piece->bytes.clear();
        m_piece->end.reset();
    }

    AheadQueue<ComposedPiece> *m_pieces;
    ComposedPiece *m_piece = nullptr;
};

void composeAll(const std::vector<const MailMLRC *> &records, ByteSource *archive,
                const std::function<bool()> &goOn, AheadQueue<ComposedPiece> *pieces)
{
    PieceFiller filler(pieces);
    const TakeBytes give = [&filler](std::string_view bytes) { filler.append(bytes); };
    for (const MailMLRC *record : records) {
        if (filler.isStopped())
            return;
        filler.endMessage(composeOlmMessage(*record, archive, goOn, give));
    }
}
} // namespace

OlmMessages::OlmMessages(std::vector<const MailMLRC *> records, ByteSource *archive,
                         const std::function<bool()> &goOn)
    : m_goOn(goOn),
      m_pieces([records = std::move(records), archive, goOn](AheadQueue<ComposedPiece> *pieces) {
          composeAll(records, archive, goOn, pieces);
      })
{
}

ExactMessageCopy OlmMessages::appendNext(MailboxFile *target)
{
    const qint64 before = target->size();
    ExactMessageCopy result;
    result.end = ExactEnd::Stopped;
    while (const ComposedPiece *piece = m_goOn() ? m_pieces.next() : nullptr) {
        target->append(piece->bytes);
        if (!piece->end)
            continue;
        result = piece->end->result;
        for (const QString &problem : piece->end->problems)
            reportProblem(problem);
        break;
    }
    if (result.end != ExactEnd::Whole)
        target->truncate(before);
    return result;
}
