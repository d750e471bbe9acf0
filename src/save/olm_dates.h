#pragma once

#include "app/olm_records.h"

/// The dates of a composed message, as timeconverter1 writes them; an empty one stands for the present time.
struct OlmDates {
    bool written = false; ///< false: the message gets neither envelope nor Date header
    QByteArray envelope;
    QByteArray header;
};

/// Which of a record's dates count: that depends on its folder and on whether it was sent or received.
OlmDates datesOfOlmRecord(const MailMLRC &record);
