#pragma once

#include "ui_BrowseWindow.h"

#include <QWidget>

struct StoreKind;

/// The selection dialog: mail client and place of its store. What it decides ends in m_selectedFile and in the scan
/// thread's m_mailClientIndex. A new object is made for every selection.
class QParseDatabase : public QWidget, private Ui_BrowseWindow
{
    Q_OBJECT

public:
    explicit QParseDatabase(QWidget *parent);

    /// Chooses a store by its path: an .olm file with its client; a folder for the client that is chosen if that reads
    /// what lies below, else the largest store below it with the client that fits. Where a short look finds none, the
    /// folder is for the client that is chosen, or that is chosen next.
    void chooseStore(const QString &path);

public slots:
    /// A client was chosen, by its index: shows its default location, or the folder dropped before.
    void ChangeSourceLineEdit(int index);
    /// Asks for the client's folder or file.
    void SourceLocationOfFile();
    /// Starts the scan of the place chosen and hides the dialog; says what is missing first.
    void StartFormatConversion();
    /// The user leaves without a scan.
    void closeEvent();

protected:
    /// A click on the word beside the Start button is one on the button.
    bool eventFilter(QObject *watched, QEvent *event) override;
    /// The window manager's close box acts as the Close button.
    void closeEvent(QCloseEvent *event) override;
    /// Enter presses the button with the focus or the default one, Escape leaves, as in any dialog.
    void keyPressEvent(QKeyEvent *event) override;

private:
    void ConnectSignals();

    struct StoreRow;
    static const StoreRow &rowOf(const StoreKind &kind);
    void DefaultDatabaseLocation() { fillDefaultLocation(); }
    void DefaultDatabaseLocationforEml() { fillDefaultLocation(); }
    void DefaultDatabaseLocationforEmlandfEml() { fillDefaultLocation(); }
    void DefaultDatabaseLocationforMbs() { fillDefaultLocation(); }
    void DefaultDatabaseLocationforMbox() { fillDefaultLocation(); }
    void OpenFileDialogForSelectMailClient();
    void OpenFileDialog() { browseForFolder(); }
    void OpenFileDialogforEml() { browseForFolder(); }
    void OpenFileDialogforEmlandfEml() { browseForFolder(); }
    void OpenFileDialogforMbs() { browseForFolder(); }
    void OpenFileDialogforMbox() { browseForFolder(); }

    void fillDefaultLocation();
    void showSelectedFile();
    void browseForFolder();
    void browseForFile();
    void showChosen();

    QString m_dropped; ///< a folder that waits for its client
};
