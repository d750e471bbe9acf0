#pragma once

#include "browse/message_rows.h"
#include "browse/preview.h"

#include <QHash>
#include <QMainWindow>
#include <QPointer>

#include <functional>

class AboutDlg;
class HeaderPane;
class MailView;
class PreferencesDialog;
class QImportWindow;
class QLabel;
class QProgressBar;
class QProgressInfo;
class QPushButton;
class QTextBrowser;
class QTreeWidget;
class QTreeWidgetItem;
class RowFeed;

/// The one main window: shell, panes and the flow select, scan, browse, tick, save. Its members lie beside what they
/// are about, in the folders `window`: of app the shell, of browse panes and lists, of scan the selection, of save the
/// save.
/// Everything here runs on the main thread; what the workers signal arrives queued.
class QConverterMainWindow : public QMainWindow
{
    Q_OBJECT

public:
    QConverterMainWindow();
    /// Stops a worker that still runs and waits for it.
    ~QConverterMainWindow() override;

    /// Shows the selection dialog over this window.
    void ShowParseWindow();
    /// Asks for a folder, makes room for the bundle and starts the save thread (see SaveTarget).
    void OnSavingFilesforOutlook();
    /// The same for the Apple Mail bundle.
    void OnSavingFilesforApple();

    /// A worker is about to start: until endRun no other selection or save can begin.
    void beginRun();
    /// A worker has ended, or was asked to: the buttons, the Save action and the tree can be used again.
    void endRun();
    /// Waits for a worker that is on its way to its end, while the window goes on painting itself.
    void letWorkersEnd();
    /// A store was dropped on the window: as Open, with this place chosen.
    void takeDroppedStore(const QString &path);
    /// The selection dialog went away without a scan.
    void onSelectionClosed();
    void enablePreferences();
    void hideStatusProgress();
    /// Shows the closing window of a save: `text`, then what could not be read or written.
    void showSaveResult(const QString &text);

public slots:
    /// Asks whether the last scan may go, and shows the selection dialog.
    void OnOpenFile();
    /// Shows the target dialog, if a folder is ticked.
    void OnSavingFiles();

    void OpenHelp();
    void OnEmailSupport();
    void OnViewSupport();
    void OnGenerateTicket();
    void OnKnowledgeBase();
    void aboutVelmoraKestrin();
    void OnPreferences();

private slots:
    // The shell: pictures of the tool buttons while the pointer is over them.
    void OnOpenEnter();
    void OnOpenLeave();
    void OnSaveEnter();
    void OnSaveLeave();
    void OnHelpEnter();
    void OnHelpLeave();

    // What the workers tell.
    void ShowProgressDlg();
    void SetIndivisibleProgress(double value);
    void SetSubProgress(double value);
    void SetProgressValueForOlmMail();
    void SetProgressHide();
    void HideProgressBar();
    void OnNoDataIntoFile();
    void OnMakeTreeWidget(qint64 folderId, const QString &name, qint64 parentId, const QString &path);
    void onWorkerEnded();

    void OnStopPushButton();
    void OnStatusBarValue(const QString &name, uint count);

    // The panes.
    void ShowindivisualMailItemsInfo(QTreeWidgetItem *item, int column);
    void OnMessageSubjectKey();
    void enterMessageList();
    void onFolderItemChanged(QTreeWidgetItem *item, int column);

protected:
    void closeEvent(QCloseEvent *event) override;

private:
    // Construction.
    void OnInit();
    void OnInitialize();
    void CreateActions();
    void CreateMyToolBar();
    void CreateToolBar();
    void CreateMenuBar();
    void createStatusBar();
    void createPreferences();
    void createAbout();
    void CreateLeftDockWindows();
    void ConnectSignals();
    void connectScanThread();
    void connectSaveThread();
    QTreeWidget *createFolderTree();
    QTreeWidget *createMessageList();
    QWidget *createPreviewFrame();

    // Folder tree and marks.
    QTreeWidgetItem *newFolderItem(const QString &name, qint64 folderId, qint64 parentId,
                                   const QString &path);
    void LeftTreeWidgetItem(QTreeWidgetItem *item);
    void MarkDirToRootCheckedOrUnchecked(unsigned char state, unsigned long long id);
    void MarkChildAccordingToParent(QTreeWidgetItem *item, unsigned char state);
    void MarkParentAccordingToChild(QTreeWidgetItem *item);
    void checkAllFolderItems(Qt::CheckState state);

    // Message list.
    void OnGetAllMailofMbox(const QString &path, const QString &name);
    void OnGetAllMailofMbs(const QString &path, const QString &name);
    void OnGetAllMailofOlm(QTreeWidgetItem *item, int column, const QString &name);
    void OnGetAllFileAndDir(const QString &path);
    void OnShowIndivisualMailData(const QString &name, const QString &path);
    void beginList();
    /// Runs `read` on a thread of its own and shows the rows that it feeds, while the window answers.
    void fillList(const std::function<void(RowFeed &)> &read);
    void addRows(std::vector<MessageRow> rows);
    void endList(const QString &name);

    // Preview.
    void ShowindivisualMailItemsCenter(QTreeWidgetItem *item, int column);
    void OnMessageSubjectClicked(QTreeWidgetItem *item, int column);
    void OnWebViewForMboxFileInHTML(const QString &path, const QString &offset, const QString &length);
    void OnWebViewInHTML(const QString &path);
    void showPreview(const PreviewText &preview);
    void clearPreview();

    // Selection and save.
    bool workerIsBusy();
    void openSelectionDialog();
    void discardView();
    void saveFiles(const struct SaveTarget &target);
    /// Takes the place at FileSavingPath, asked for what stands there; false if no save may begin.
    bool takePlace(const QString &name);
    /// The replace question.
    bool mayReplace(const QString &name);
    void CreateMailFolder();
    void CreateMailFolderforApple();
    void tellEndedEarly();
    void tellReport();
    void finishSave();

    /// How far a worker is: Active from the start to its end signals, Ending until its thread has ended.
    enum class Run { None, Active, Ending };

    Run m_run = Run::None;
    bool m_listLoading = false; ///< a folder's files are being read while events are processed
    bool m_marking = false;     ///< check states are being set by the program, not by the user

    QAction *m_pAboutAction = nullptr;
    QAction *m_pPreferencesAction = nullptr;
    QAction *m_pSaveButtonAction = nullptr; ///< in no menu
    QAction *m_pOpenButtonAction = nullptr; ///< in no menu
    QAction *m_pOpenAction = nullptr;
    QAction *m_pSaveAction = nullptr;
    QAction *m_pHelpAction = nullptr;
    QAction *m_pEmailAction = nullptr;
    QAction *m_pViewSupportAction = nullptr;
    QAction *m_pKnowledgeBaseAction = nullptr;
    QAction *m_pTicketAction = nullptr;

    QLabel *m_pFolderNameLabel = nullptr;
    QLabel *m_pCountLabel = nullptr;
    QProgressBar *m_pStatusProgress = nullptr;
    QPushButton *m_pStatusStopButton = nullptr;

    QTreeWidget *m_pFolderTree = nullptr;
    QTreeWidget *m_pMessageList = nullptr;
    HeaderPane *m_pHeaderPane = nullptr;
    QTextBrowser *m_pSecondPane = nullptr;
    MailView *m_pWebView = nullptr;
    QHash<qint64, QTreeWidgetItem *> m_folderItems; ///< the tree's items by folder id

    PreferencesDialog *m_pPreferences = nullptr;
    AboutDlg *m_pAbout = nullptr;
    QImportWindow *m_pImportWindow = nullptr;
    QPointer<QProgressInfo> m_pProgressInfo; ///< the dialog of the last run; null before the first
    QPointer<QProgressBar> m_pProgressBar;   ///< its bar
};
