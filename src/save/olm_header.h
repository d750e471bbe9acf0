#pragma once

#include "app/olm_records.h"

#include <QDateTime>

/// What a composed message takes from elsewhere than its record.
struct OlmMarks {
    QDateTime now;        ///< for a message without a date
    QByteArray messageId; ///< new, 32 hexadecimal digits
    int number = 0;       ///< makes the inner boundary another than the outer one; used where there is a body
};

/// The header block of a message, up to its "Mime-version" line: envelope, subject, people, date and marks.
QByteArray olmHeaderBlock(const MailMLRC &record, const OlmMarks &marks);
/// The number of To and Cc headers of a message that name nobody though the record does.
int emptyRecipientHeaders(const MailMLRC &record);
