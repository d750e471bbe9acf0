#pragma once

#include "ui_ImportMsgDlg.h"

#include <QDialog>

/// The closing window of a save: where the bundle lies, and links to the pages that tell how to import it.
class QImportWindow : public QDialog, private Ui_ImportMsgDlg
{
    Q_OBJECT

public:
    explicit QImportWindow(QWidget *parent);

    /// Fill the link labels from the settings property list; a link without a text is hidden.
    void HTImport();
    void HTImport1();

    /// Shows the window with this text. It grows by what the text needs beyond the form's room.
    void showMessage(const QString &text);

public slots:
    void HideDlg();

private:
    void setMessage(const QString &text);
};
