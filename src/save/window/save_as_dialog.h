#pragma once

#include "ui_SaveAsDlg.h"

#include <QDialog>

/// The target dialog: which mail client the bundle is for. Offers what the scanned store may be saved to.
class SaveAsWindow : public QDialog, private Ui_SaveAsDlg
{
    Q_OBJECT

public:
    explicit SaveAsWindow(QWidget *parent);

public slots:
    /// Takes the choice and goes on with it.
    void OnOk();

private:
    void placeExactCopies();
    void offer(QRadioButton *choice, bool offered, bool checked);
};
