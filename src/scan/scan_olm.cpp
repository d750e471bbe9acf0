#include "scan/message_saving_thread.h"

#include "app/olm_records.h"
#include "app/passed_over.h"
#include "app/problem_log.h"
#include "app/shared_state.h"
#include "scan/folder_ids.h"
#include "scan/no_data_reason.h"
#include "scan/olm_record.h"
#include "scan/olm_walk.h"

namespace
{
OlmPendingAttachments pendingAttachments()
{
    return {tmpstrOrigPath, tmpdoffset_NoteText, tmpdsizeofattch};
}

// Tells the records made of a text, from `record` on, where their XML stands.
void placeRecords(MailMLRC *record, const QByteArray &xml, qint64 start)
{
    const QByteArray messageEnd = "</email>";
    int begin = 0;
    for (; record; record = record->pNext) {
        const int end = xml.indexOf(messageEnd, begin) + messageEnd.size();
        record->llXmlOffset = start + begin;
        record->llXmlSize = end - begin;
        begin = end;
    }
}

void reportCount(qint64 count, const char *sentence)
{
    if (count > 0)
        reportProblem(QString::fromUtf8(sentence).arg(count).arg(m_selectedFile));
}
} // namespace

int QMessageSavingThread::OpenDevice()
{
    m_archive = std::make_unique<ByteSource>(ByteSource::ofFile(m_selectedFile));
    fileDescriptor = m_archive->descriptor();
    lSize = m_archive->size();
    scannedArchive = m_archive->stamp();
    return fileDescriptor;
}

void QMessageSavingThread::CleanListAndHash()
{
    freeOlmRecords();
}

void QMessageSavingThread::CreateFile()
{
    CleanListAndHash();
    pendingAttachments().clear(); // what another archive has left
    m_lostAttachments = 0;
    bStopFlag = false;
    dwOffset = 0;
    const int file = OpenDevice();
    emit OnShowProgressDlg();
    if (file < 0) {
        endWithoutArchive();
        return;
    }
    const OlmWalkResult walk = walkOlm(m_archive.get(), eventsOfWalk());
    reportOlmProblems(walk);
    m_archive.reset();
    fileDescriptor = -1;
    if (walk.stopped)
        return;
    if (TmpMlrcPtrStart) {
        emitFinished();
        return;
    }
    if (!hasProblems())
        reportProblem(Problem::tr("there is no message in it: ") + m_selectedFile);
    emitNoArchiveData();
}

// What the reader does with each thing that the walk comes to.
OlmWalkEvents QMessageSavingThread::eventsOfWalk()
{
    OlmWalkEvents events;
    events.goOn = [this, shown = -1](qint64 position) mutable {
        dwOffset = position;
        const int percent =
            lSize > 0 ? static_cast<int>(100.0 * static_cast<double>(dwOffset) / static_cast<double>(lSize))
                      : 100;
        if (percent != shown)
            emit OnIndivisibleProgressvalue(percent);
        shown = percent;
        return !bStopFlag;
    };
    events.attachment = [this](const QString &name, qint64 offset, qint64 size) {
        InitializeAttachment(name, offset, size);
    };
    events.entry = [](const QString &name, qint64 offset, qint64 size) {
        noteOlmEntry(name, {offset, size});
    };
    events.messages = [this](const OlmText &text) {
        MailMLRC *last = TmpMlrcPtrEnd;
        pBuff = text.xml->data();
        InitializeMLRC(text);
        placeRecords(last ? last->pNext : TmpMlrcPtrStart, *text.xml, text.start);
        pBuff = nullptr;
    };
    events.compressed = [](const QString &name) {
        passedOver.add(m_selectedFile + QLatin1Char('/') + name, PassedOverReason::Compressed);
    };
    return events;
}

// What is there but no file, a folder for example, holds no mail; what can't be opened ends the reader.
void QMessageSavingThread::endWithoutArchive()
{
    if (m_archive->errorNumber() == 0) {
        reportNoData(true);
        emitNoArchiveData();
        return;
    }
    reportUnread(Problem::tr("can't be opened: ") + m_archive->errorString());
    bStopFlag = true;
}

void QMessageSavingThread::emitNoArchiveData()
{
    emit OnSubProgressHide();
    emit ProgressDailogHide();
    emit NoDataIntoFile();
    bStopFlag = true;
}

void QMessageSavingThread::InitializeAttachment(const QString &path, qint64 offset, qint64 size)
{
    pendingAttachments().add(path, offset, size);
}

// Of several messages in one entry only the first gets the entry's folder.
void QMessageSavingThread::InitializeMLRC(const OlmText &entry)
{
    const QString &folder = entry.folder;
    treeCreatorforOlm(folder);
    OlmPendingAttachments pending = pendingAttachments();
    const QByteArray text = olmText(QByteArray::fromRawData(pBuff, static_cast<int>(qstrlen(pBuff))));
    forEachOlmMessage(text, entry.end, [&](std::string_view message, qint64 start) {
        MailMLRC record;
        if (folder.size() <= folderFieldLimit)
            record.szFolderPath.set(folder);
        record.llParentId = folder.isEmpty() ? noFolderId : llParentIdRunning;
        llParentIdRunning = 0;
        if (record.llParentId == noFolderId || record.llParentId == 0)
            passedOver.add(m_selectedFile + QLatin1Char('/') + entry.name, PassedOverReason::NoFolder);
        if (readOlmMessage(message, start, &pending, &record) == OlmAttachmentMatch::Lost)
            ++m_lostAttachments;
        appendOlmRecord(std::move(record));
    });
}

void QMessageSavingThread::reportOlmProblems(const OlmWalkResult &walk)
{
    if (!m_forExactCopies)
        reportCount(
            m_lostAttachments,
            "without its attachments, which don't stand before it in the archive: %1 message(s) of %2");
    reportCount(walk.compressed, "passed over, their contents are compressed: %1 entries of %2");
    reportCount(walk.tooLong, "passed over, their text is too long: %1 entries of %2");
    if (!m_archive->errorString().isEmpty())
        reportUnread(Problem::tr("can't be read to its end: ") + m_archive->errorString());
    else if (walk.cutOff)
        reportUnread(Problem::tr("cut off, its central directory is missing and messages may be too: ") +
                     m_selectedFile);
}
