#include "browse/olm_preview.h"

#include "app/olm_records.h"
#include "app/problem_log.h"
#include "app/shared_state.h"
#include "platform/byte_source.h"
#include "text/codecs.h"
#include "text/date_rules.h"
#include "text/semicolon_list.h"

#include <QStringList>

namespace
{
// The lines of the header pane.
std::vector<HeaderLine> MessageFieldsForThePreview(const MailMLRC &record)
{
    std::vector<HeaderLine> header;
    const auto append = [&](const QByteArray &field, const char *label, const QString &text,
                            bool bold = false) {
        if (!field.isEmpty())
            header.push_back({QLatin1Char('\n') + QLatin1String(label) + text, bold});
    };
    append(record.szFromAddress.bytes(), "", lastItem(record.szFromAddress.text()), true);
    append(record.szToAddress.bytes(), "To: ", record.szToAddress.text());
    append(record.szCcAddress.bytes(), "Cc: ", record.szCcAddress.text());
    append(record.szSubject.bytes(), "", record.szSubject.text());
    append(record.szSentTime.bytes(),
           "Date: ", displayDate(record.szSentTime.text(), ZoneNames::CommonAndIndia));
    append(record.szBccAddress.bytes(), "", record.szBccAddress.text());
    append(record.pAttachNames, "Attachments: ",
           QString::fromLatin1(record.pAttachNames).replace(QLatin1Char(';'), QLatin1Char('\n')));
    return header;
}

// The body's bytes, as many as there still are.
QByteArray readBody(const MailMLRC &record)
{
    ByteSource archive = ByteSource::ofFile(m_selectedFile);
    const qint64 wanted = qBound<qint64>(0, record.llBodySize, archive.size());
    QByteArray body(static_cast<int>(wanted), '\0');
    const qint64 taken = archive.read(record.llBodyOffset, body.data(), wanted);
    if (!archive.errorString().isEmpty())
        reportUnread(Problem::tr("can't be shown: ") + archive.errorString());
    else if (!(archive.stamp() == scannedArchive))
        reportUnread(Problem::tr("another file than the one that was scanned: ") + m_selectedFile);
    else if (taken < record.llBodySize)
        reportUnread(Problem::tr("a message can't be shown whole, it reaches past the end: ") +
                     m_selectedFile);
    body.truncate(static_cast<int>(taken));
    return body;
}

// The body as it goes to the web view.
QString OnWebViewForOlmFileInHTML(const MailMLRC &record)
{
    return olmBodyHtml(readBody(record));
}
} // namespace

QString olmBodyHtml(QByteArray body)
{
    body.replace("&lt;", "<").replace("&amp;", "&").replace("&nbsp;", " ");
    body.replace("&amp;lt;", "<").replace("&gt;", ">");
    return utf8UpToZero(body);
}

std::optional<PreviewText> previewOfOlmMessage(const QString &bodyOffset, const QString &bodySize)
{
    const MailMLRC *record = olmRecordOfBody(bodyOffset.toLongLong(), bodySize.toULongLong());
    if (!record)
        return std::nullopt;
    PreviewText preview;
    preview.header = MessageFieldsForThePreview(*record);
    preview.html = OnWebViewForOlmFileInHTML(*record);
    return preview;
}
