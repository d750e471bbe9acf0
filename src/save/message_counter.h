#pragma once

#include "app/records.h"
#include "platform/byte_source.h"

#include <QElapsedTimer>

#include <optional>

/// Counts the messages of mailboxes that a save has not copied, or not to the end: as the scan did or, where that did
/// not look into the files, by reading them, but no longer in all than a user who stops a save will wait.
class MessageCounter
{
public:
    MessageCounter() { m_timer.start(); }

    /// Nothing where the number is not known.
    std::optional<qint64> operator()(const QString &path) const;

private:
    QElapsedTimer m_timer;
};

/// Tells of a mailbox that was copied to its end, but is shorter than at the scan: how many messages have gone is not
/// known where the scan did not count them.
void tellShrunk(const MailItemNode &mailbox, const ByteSource &source);
