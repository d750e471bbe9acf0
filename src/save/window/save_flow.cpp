#include "app/window/main_window.h"

#include "app/problem_log.h"
#include "app/shared_state.h"
#include "app/window/window_state.h"
#include "dialogs/problem_text.h"
#include "save/bundle.h"
#include "save/bundle_place.h"
#include "save/mail_saving.h"
#include "save/ticked_items.h"
#include "save/window/save_as_dialog.h"

#include <QDir>
#include <QFileDialog>
#include <QMessageBox>
#include <QTreeWidget>
#include <QTreeWidgetItemIterator>

/// What differs between the two targets.
struct SaveTarget {
    const Bundle &bundle;
    void (QConverterMainWindow::*prepareFolders)();
};

void QConverterMainWindow::OnSavingFiles()
{
    if (workerIsBusy())
        return;
    if (m_pSaveAs) {
        m_pSaveAs->hide();
        m_pSaveAs->deleteLater();
    }
    m_pSaveAs = new SaveAsWindow(this);
    const bool anyTicked = StartFldrAtrib && StartFldrAtrib->state != stateNotTicked;
    if (anyTicked)
        m_pSaveAs->show();
    else
        QMessageBox::information(this, tr("Velmora Apple Mail to Outlook 2011 Converter"),
                                 tr("Select a folder to save."));
}

void QConverterMainWindow::OnSavingFilesforOutlook()
{
    saveFiles({outlookBundle, &QConverterMainWindow::CreateMailFolder});
}

void QConverterMainWindow::OnSavingFilesforApple()
{
    saveFiles({appleBundle, &QConverterMainWindow::CreateMailFolderforApple});
}

void QConverterMainWindow::saveFiles(const SaveTarget &target)
{
    bStopFlag = false;
    setTargetBundle(target.bundle);
    saveDir = QFileDialog::getExistingDirectory(this, tr("Open Directory"), QDir::homePath(),
                                                QFileDialog::ShowDirsOnly | QFileDialog::DontResolveSymlinks);
    if (saveDir.isEmpty())
        return;
    FileSavingPath = bundlePath(target.bundle, saveDir);
    if (!takePlace(QLatin1String(target.bundle.name)))
        return;
    (this->*target.prepareFolders)();
    FileSavingIdentification = false;
    takeUnread(); // what the scan and the previews could not read was told then
    takeUnwritten();
    nextItr = 0; // before the thread counts its own with it
    beginRun();
    pMailSaving->SetInitialSettings();
}

bool QConverterMainWindow::takePlace(const QString &name)
{
    const bool replaces = BundlePlace::isThere(FileSavingPath);
    QString problem = replaces ? BundlePlace::conflict(m_selectedFile, FileSavingPath) : QString();
    if (replaces && problem.isEmpty() && !mayReplace(name))
        return false;
    if (problem.isEmpty())
        problem =
            bundlePlace.open(FileSavingPath, replaces ? BundlePlace::Old::Replace : BundlePlace::Old::Refuse);
    if (!problem.isEmpty())
        showBox(this, QMessageBox::Warning, tr("VelmoraMailConverter"), QLatin1Char('\n') + problem);
    return problem.isEmpty();
}

bool QConverterMainWindow::mayReplace(const QString &name)
{
    QMessageBox question(QMessageBox::Warning, tr("VelmoraMailConverter"),
                         tr("\n%1 already exists at this location. Do you want to replace it?").arg(name),
                         QMessageBox::Yes | QMessageBox::No, this);
    question.setDefaultButton(QMessageBox::No);
    if (const qint64 free = freeBytesIn(saveDir); free >= 0 && free < tickedBytes())
        question.setInformativeText(
            tr("The old bundle is kept until the new one is whole, and there may not be the "
               "space for both. Removing the old one first would help."));
    const int answer = question.exec();
    if (answer == QMessageBox::No)
        OnSavingFiles();
    return answer == QMessageBox::Yes;
}

namespace
{
// A folder of the same path below the target, where the folder that it would lie in is there already.
void makeFolders(QTreeWidget *tree, const char *from, const char *to)
{
    for (QTreeWidgetItemIterator item(tree); *item; ++item) {
        QString path = (*item)->text(3);
        if (*from)
            path.replace(QLatin1String(from), QLatin1String(to));
        if (!path.isEmpty())
            QDir().mkdir(saveDir + path);
    }
}
} // namespace

void QConverterMainWindow::CreateMailFolder()
{
    bForAppleMail = false;
    makeFolders(m_pFolderTree, "", "");
}

void QConverterMainWindow::CreateMailFolderforApple()
{
    bForAppleMail = true;
    makeFolders(m_pFolderTree, ".rge", ".mbox");
}
