#include "dialogs/import_window_dialog.h"

#include "dialogs/link_label.h"
#include "dialogs/problem_text.h"
#include "dialogs/report_dialog.h"
#include "platform/window/open_url.h"
#include "platform/window/text_fit.h"
#include "save/window/check_thread.h"

#include <QAction>
#include <QClipboard>
#include <QFileInfo>
#include <QGuiApplication>
#include <QUrl>

namespace
{
constexpr int messageHeight = 62; ///< pixels, as the form has it
constexpr int numbersHeight = 26; ///< likewise
constexpr int buttonGap = 8;
constexpr int buttonAir = 12; ///< pixels left and right of a button's text

// The form's width, or what the text needs.
void widen(QPushButton *button, int left)
{
    const int needed = button->fontMetrics().horizontalAdvance(button->text()) + buttonAir;
    button->setGeometry(left, button->y(), qMax(button->width(), needed), button->height());
}
} // namespace

QImportWindow::QImportWindow(QWidget *parent) : QDialog(parent)
{
    setupUi(this);
    connect(OKButton, &QPushButton::clicked, this, &QImportWindow::HideDlg);
    connect(reportButton, &QPushButton::clicked, this, &QImportWindow::openReport);
    connect(folderButton, &QPushButton::clicked, this,
            [this] { openUrl(QUrl::fromLocalFile(QFileInfo(m_report.bundle).absolutePath())); });
    auto *copy = new QAction(tr("Copy Location"), this);
    copy->setShortcut(QKeySequence::Copy);
    connect(copy, &QAction::triggered, this, &QImportWindow::copyPlace);
    addAction(copy);
    setContextMenuPolicy(Qt::ActionsContextMenu);
    widen(reportButton, reportButton->x());
    widen(folderButton, reportButton->geometry().right() + buttonGap);
    reportButton->hide();
    folderButton->hide();
    HTImport();
    HTImport1();
    label_3->setFont(lucidaFont(12)); // as its text is, whatever the desktop's font
    fitToText(label_3);
    setModal(true);
    setFixedSize(size());
}

QImportWindow::~QImportWindow() = default;

void QImportWindow::HTImport()
{
    setHelpLink(ImportLabel, QStringLiteral("Apple Mail"), QStringLiteral("HowToImportLink"));
}

void QImportWindow::HTImport1()
{
    setHelpLink(ImportLabel_2, QStringLiteral("Outlook 2011"), QStringLiteral("HowToImportLink1"));
}

void QImportWindow::showMessage(const QString &text, const QStringList &problems)
{
    m_check.reset();
    m_message = text;
    m_problems = problems;
    m_hasReport = false;
    reportButton->hide();
    folderButton->hide();
    m_numbers.clear();
    numbersLabel->clear();
    InfoLabels->setText(withProblems(m_message, m_problems));
    layOut();
    show();
    OKButton->setFocus();
}

void QImportWindow::addProblems(const QStringList &problems)
{
    m_problems += problems;
    InfoLabels->setText(withProblems(m_message, m_problems));
    layOut();
}

void QImportWindow::showReport(const SaveReport &report, const SaveLedger &ledger)
{
    m_report = report;
    m_ledger = ledger;
    m_hasReport = true;
    m_numbers = closingNumbers(report, ledger);
    reportButton->show();
    folderButton->show();
    startCheck();
}

// What stands below a text that has grown moves down by as much.
void QImportWindow::layOut()
{
    const int text = qMax(0, InfoLabels->neededHeight(InfoLabels->width()) - messageHeight);
    const int numbers = qMax(0, numbersLabel->neededHeight(numbersLabel->width()) - numbersHeight);
    const int down = text - m_moreText;
    const int lowest = down + numbers - m_moreNumbers;
    InfoLabels->resize(InfoLabels->width(), messageHeight + text);
    numbersLabel->resize(numbersLabel->width(), numbersHeight + numbers);
    for (QWidget *widget :
         std::initializer_list<QWidget *>{label_3, ImportLabel, ImportLabel_2, numbersLabel})
        widget->move(widget->x(), widget->y() + down);
    for (QWidget *widget : std::initializer_list<QWidget *>{reportButton, folderButton, OKButton})
        widget->move(widget->x(), widget->y() + lowest);
    setFixedSize(width(), height() + lowest);
    m_moreText = text;
    m_moreNumbers = numbers;
}

void QImportWindow::startCheck()
{
    m_check = std::make_unique<CheckThread>(m_ledger);
    connect(m_check.get(), &CheckThread::progress, this,
            [this](int percent) { setCheckLine(tr("Reading the result again: %1 %").arg(percent)); });
    connect(m_check.get(), &QThread::finished, this, &QImportWindow::onChecked);
    setCheckLine(tr("Reading the result again: %1 %").arg(0));
    m_check->start(QThread::LowPriority);
}

void QImportWindow::setCheckLine(const QString &line)
{
    numbersLabel->setText((m_numbers + QStringList(line)).join(QLatin1Char('\n')));
    layOut();
}

void QImportWindow::onChecked()
{
    if (!m_check || !m_check->isFinished())
        return; // of a save before
    m_report.check = m_check->result();
    setCheckLine(checkSentence(*m_report.check));
}

void QImportWindow::openReport()
{
    ReportDialog(m_report, m_ledger, m_problems, this).exec();
}

void QImportWindow::copyPlace() const
{
    QGuiApplication::clipboard()->setText(m_report.bundle);
}

void QImportWindow::HideDlg()
{
    hide();
    m_check.reset();
}
