#pragma once

#include "ui_AboutDialog.h"

#include <QDialog>

/// Names the product and the system that it runs on, with a link to the support.
class AboutDlg : public QDialog, private Ui_AboutDialog
{
    Q_OBJECT

public:
    explicit AboutDlg(QWidget *parent = nullptr);

private:
    /// Shows the operating system's name and version.
    void GetSystemInfo();
    /// Shows the support's link, or hides its label where the settings hold none.
    void GetSUpport();
};
