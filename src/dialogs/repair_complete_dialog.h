#pragma once

#include "ui_RepairComplete.h"

#include <QDialog>

/// A closing dialog with a link to the import help. It is made at start-up; no flow shows it.
class RepairComplete : public QDialog, private Ui_RepairComplete
{
    Q_OBJECT

public:
    explicit RepairComplete(QWidget *parent);

    /// Fills the link label from the settings property list; a link without a text is hidden.
    void HTImport();
};
