#include "dialogs/preferences_dialog.h"

#include "app/settings_plist.h"
#include "platform/window/open_url.h"
#include "platform/window/text_fit.h"

#include <QBitmap>
#include <QMessageBox>
#include <QMouseEvent>
#include <QPainter>
#include <QSettings>
#include <QUrl>

namespace
{

const QString organization = QStringLiteral("velmora");
const QString application = QStringLiteral("ConverterPreferences");
const QString checkKey = QStringLiteral("CheckForUpdate");
const QString intervalKey = QStringLiteral("UpdateInterval");
constexpr int buttonAir = 20;  ///< pixels
constexpr int sideMargin = 16; ///< pixels: the frame's, and half the gap between box and list

} // namespace

PreferencesDialog::PreferencesDialog(QWidget *parent) : QDialog(parent, Qt::Sheet)
{
    setupUi(this);
    connect(OkButton, &QPushButton::clicked, this, &PreferencesDialog::OnOK);
    connect(CancelButton, &QPushButton::clicked, this, &PreferencesDialog::OnCancelButton);
    connect(CheckUpdateButton, &QPushButton::clicked, this, &PreferencesDialog::CheckUpdate);
    connect(CheckForUpdateCheckBox, &QCheckBox::stateChanged, this, &PreferencesDialog::OnCheckUpdateChange);
    ByDefaultSettings();
    // The style leaves its text hardly any air.
    CheckUpdateButton->setMinimumWidth(
        CheckUpdateButton->fontMetrics().horizontalAdvance(CheckUpdateButton->text()) + buttonAir);
    // The longest text here; with a large desktop font it gets the size that the dialog has room for.
    const int room = maximumWidth() - 2 * sideMargin - comboBoxUpdates->sizeHint().width();
    shrinkFont(CheckForUpdateCheckBox, [&] { return CheckForUpdateCheckBox->sizeHint().width() <= room; });
    shrinkFont(label_2, [this] {
        layout()->activate();
        frameLayout->activate();
        return label_2->heightForWidth(label_2->width()) <= label_2->height();
    });
}

void PreferencesDialog::ByDefaultSettings()
{
    const QSettings settings(organization, application);
    const bool check = settings.value(checkKey, false).toBool();
    CheckForUpdateCheckBox->setChecked(check);
    comboBoxUpdates->setEnabled(check);
    if (!check)
        return;
    const int index = comboBoxUpdates->findText(settings.value(intervalKey).toString());
    if (index >= 0)
        comboBoxUpdates->setCurrentIndex(index);
}

void PreferencesDialog::OnCheckUpdateChange(int state)
{
    comboBoxUpdates->setEnabled(state != Qt::Unchecked);
}

void PreferencesDialog::OnOK()
{
    QSettings settings(organization, application);
    if (!comboBoxUpdates->currentText().isEmpty())
        settings.setValue(intervalKey, comboBoxUpdates->currentText());
    settings.setValue(checkKey, CheckForUpdateCheckBox->isChecked());
    accept();
}

void PreferencesDialog::OnCancelButton()
{
    reject();
}

void PreferencesDialog::CheckUpdate()
{
    CheckUpdateButton->setEnabled(false);
    const QString address = linkSetting(QStringLiteral("UpdateLink"));
    if (address.isEmpty())
        QMessageBox::information(this, QString(),
                                 tr("No address to ask for updates is set, so it is not known whether there "
                                    "are any. You have version %1.")
                                     .arg(QStringLiteral(VELMORA_VERSION)));
    else
        openUrl(QUrl(address));
    CheckUpdateButton->setEnabled(true);
    CheckUpdateButton->setFocus(); // which it lost when it was disabled
}

void PreferencesDialog::mousePressEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton)
        m_dragOffset = event->globalPos() - frameGeometry().topLeft();
}

void PreferencesDialog::mouseMoveEvent(QMouseEvent *event)
{
    if (event->buttons() & Qt::LeftButton)
        move(event->globalPos() - m_dragOffset);
}

void PreferencesDialog::resizeEvent(QResizeEvent *)
{
    QBitmap shape(size());
    shape.fill(Qt::color0);
    QPainter painter(&shape);
    painter.setPen(Qt::color1);
    painter.setBrush(Qt::color1);
    painter.drawRoundedRect(rect(), 0, 0, Qt::RelativeSize);
    painter.end();
    setMask(shape);
}
