#include "save/window/save_as_dialog.h"

#include "app/shared_state.h"
#include "app/window/main_window.h"
#include "app/window/window_state.h"
#include "platform/window/text_fit.h"
#include "scan/store_kinds.h"

SaveAsWindow::SaveAsWindow(QWidget *parent) : QDialog(parent, Qt::Sheet)
{
    setupUi(this);
    fitToText(label_3);
    CloseButton->move(CloseButton->x() - fitToText(Ok_Button), CloseButton->y());
    for (QAbstractButton *button :
         {static_cast<QAbstractButton *>(CloseButton), static_cast<QAbstractButton *>(radioButtonforApple),
          static_cast<QAbstractButton *>(radioButtonforOutlook)})
        fitToText(button);
    connect(CloseButton, &QPushButton::clicked, this, &QDialog::close);
    connect(Ok_Button, &QPushButton::clicked, this, &SaveAsWindow::OnOk);
    radioButton->setFocus();
    radioButton->hide();
    placeExactCopies();

    const StoreKind *kind = findStoreKind(pMessageSavingThread->m_mailClientIndex);
    if (!kind || kind->targets == Targets::None)
        return;
    offer(radioButtonforOutlook, kind->targets != Targets::AppleMail, kind->targets != Targets::AppleMail);
    offer(radioButtonforApple, kind->targets != Targets::Outlook, kind->targets == Targets::AppleMail);
    (radioButtonforApple->isChecked() ? radioButtonforApple : radioButtonforOutlook)->setFocus();
}

// Between the choices and the buttons, whatever the language and the font; off at each save.
void SaveAsWindow::placeExactCopies()
{
    const int room = CloseButton->x() - exactCopies->x() - 2;
    shrinkFont(exactCopies, [&] { return exactCopies->sizeHint().width() <= room; });
    fitToText(exactCopies);
}

void SaveAsWindow::offer(QRadioButton *choice, bool offered, bool checked)
{
    choice->setEnabled(offered);
    choice->setChecked(checked);
}

void SaveAsWindow::OnOk()
{
    bExactCopies = exactCopies->isChecked();
    if (radioButtonforOutlook->isChecked()) {
        hide();
        pConverterWin->OnSavingFilesforOutlook();
    } else if (radioButtonforApple->isChecked()) {
        hide();
        pConverterWin->OnSavingFilesforApple();
    }
}
