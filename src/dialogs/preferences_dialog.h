#pragma once

#include "ui_PreferencesDlg.h"

#include <QDialog>
#include <QPoint>

/// The one setting of the program: whether and how often the user wants to look for updates. Read once, when the
/// dialog is made; stored by OK.
class PreferencesDialog : public QDialog, private Ui_PreferencesDlg
{
    Q_OBJECT

public:
    explicit PreferencesDialog(QWidget *parent = nullptr);

public slots:
    /// Stores the settings and closes.
    void OnOK();
    void OnCancelButton();
    /// Opens the page that tells of updates ("UpdateLink" of the settings property list), or says that none is set.
    /// The program itself fetches nothing.
    void CheckUpdate();
    /// The interval can be chosen only while the check box is ticked.
    void OnCheckUpdateChange(int state);

protected:
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    void ByDefaultSettings();

    QPoint m_dragOffset; ///< of the pointer from the window's corner, where the drag began
};
