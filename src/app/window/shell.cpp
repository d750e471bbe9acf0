#include "app/window/main_window.h"

#include "app/window/my_button.h"
#include "app/window/window_state.h"
#include "platform/window/text_fit.h"

#include <QAction>
#include <QEvent>
#include <QLabel>
#include <QLayout>
#include <QMenu>
#include <QMenuBar>
#include <QStyle>
#include <QToolBar>

namespace
{
using Window = QConverterMainWindow;

const char imageOpen[] = ":/images/img_Open.png";
const char imageHoverOpen[] = ":/images/img_HoverOpen.png";
const char imageSave[] = ":/images/img_Save.png";
const char imageHoverSave[] = ":/images/img_HoverSave.png";
const char imageHelp[] = ":/images/img_HelpFile.png";
constexpr int captionGap = 6; ///< pixels between the texts below two buttons

void setIcon(MyButton *button, const char *image)
{
    button->setIcon(QIcon(QLatin1String(image)));
}

QToolBar *newToolBar(QMainWindow *window, const QString &title)
{
    QToolBar *bar = window->addToolBar(title);
    bar->setOrientation(Qt::Horizontal);
    bar->setIconSize(QSize(40, 40));
    bar->setMovable(false);
    bar->setFloatable(false);
    return bar;
}

void addGap(QToolBar *bar, int width, int height)
{
    auto *gap = new QLabel(bar);
    gap->setFixedSize(width, height);
    bar->addWidget(gap);
}

// The texts below the buttons: children of the bar that its layout knows nothing of. Each has a place of its own,
// which it leaves for the right where the text before it, in another language, needs more room; in a layout from right
// to left all lie mirrored, as the buttons do.
class Captions : public QObject
{
public:
    explicit Captions(QToolBar *bar) : QObject(bar), m_bar(bar) { bar->installEventFilter(this); }

    void add(const QString &text, const QRect &place)
    {
        auto *caption = new QLabel(text, m_bar);
        caption->setFont(lucidaFont(10));
        caption->setAttribute(Qt::WA_TransparentForMouseEvents);
        QRect free = place;
        if (!m_captions.isEmpty())
            free.moveLeft(qMax(place.left(), m_end + captionGap));
        m_end = free.left() + caption->sizeHint().width();
        m_captions.append({caption, free});
        lay();
    }

protected:
    bool eventFilter(QObject *, QEvent *event) override
    {
        if (event->type() == QEvent::Resize || event->type() == QEvent::LayoutDirectionChange)
            lay();
        return false;
    }

private:
    void lay()
    {
        const bool mirrored = m_bar->layoutDirection() == Qt::RightToLeft;
        for (const auto &[caption, place] : qAsConst(m_captions)) {
            caption->setGeometry(QStyle::visualRect(m_bar->layoutDirection(), m_bar->rect(), place));
            caption->setAlignment(Qt::AlignAbsolute | Qt::AlignVCenter |
                                  (mirrored ? Qt::AlignRight : Qt::AlignLeft));
        }
    }

    QToolBar *m_bar;
    QVector<QPair<QLabel *, QRect>> m_captions;
    int m_end = 0; ///< where the last caption's text ends
};
} // namespace

void QConverterMainWindow::CreateActions()
{
    struct Row {
        QAction **action;
        QString text;
        QString toolTip; ///< empty: the toolkit's own
        QAction::MenuRole role;
        bool enabled;
        void (Window::*slot)();
    };
    const QAction::MenuRole plain = QAction::TextHeuristicRole;
    const QString save = tr("Save Converted File");
    const QString open = tr("Open File");
    const QString none;
    const Row rows[] = {
        {&m_pAboutAction, tr("&About"), none, QAction::AboutRole, true, &Window::aboutVelmoraKestrin},
        {&m_pPreferencesAction, tr("&Preferences..."), none, QAction::PreferencesRole, true,
         &Window::OnPreferences},
        {&m_pSaveButtonAction, save, save, plain, true, &Window::OnSavingFiles},
        {&m_pOpenButtonAction, open, open, plain, true, &Window::OnOpenFile},
        {&m_pOpenAction, open, open, plain, true, &Window::OnOpenFile},
        {&m_pSaveAction, save, save, plain, false, &Window::OnSavingFiles},
        {&m_pHelpAction, tr("&Help Topics"), none, plain, true, &Window::OpenHelp},
        {&m_pEmailAction, tr("&Email to Velmora Support"), none, plain, true, &Window::OnEmailSupport},
        {&m_pViewSupportAction, tr("&View Support Section"), none, plain, true, &Window::OnViewSupport},
        {&m_pKnowledgeBaseAction, tr("&View Knowledgebase Articles"), none, plain, true,
         &Window::OnKnowledgeBase},
        {&m_pTicketAction, tr("&Submit Enquiry"), none, plain, true, &Window::OnGenerateTicket},
    };
    for (const Row &row : rows) {
        auto *action = new QAction(row.text, this);
        if (!row.toolTip.isEmpty())
            action->setToolTip(row.toolTip);
        action->setMenuRole(row.role);
        action->setEnabled(row.enabled);
        connect(action, &QAction::triggered, this, row.slot);
        *row.action = action;
    }
}

void QConverterMainWindow::CreateMyToolBar()
{
    struct Row {
        MyButton **button;
        QSize size;
        const char *image;
        QString name; ///< for a screen reader
        void (Window::*enter)();
        void (Window::*leave)();
        void (Window::*clicked)();
    };
    const Row rows[] = {
        {&m_pMyOpenButton, QSize(30, 28), imageOpen, tr("Open"), &Window::OnOpenEnter, &Window::OnOpenLeave,
         &Window::OnOpenFile},
        {&m_pMySaveButton, QSize(30, 28), imageSave, tr("Save"), &Window::OnSaveEnter, &Window::OnSaveLeave,
         &Window::OnSavingFiles},
        {&m_pMyHelpButton, QSize(40, 40), imageHelp, tr("Help"), &Window::OnHelpEnter, &Window::OnHelpLeave,
         &Window::OpenHelp},
    };
    for (const Row &row : rows) {
        auto *button = new MyButton(this);
        button->setFixedSize(row.size);
        button->setPicture(QLatin1String(row.image));
        button->setAccessibleName(row.name);
        connect(button, &MyButton::ChangePixmap, this, row.enter);
        connect(button, &MyButton::OnUpdatePixmap, this, row.leave);
        connect(button, &MyButton::clicked, this, row.clicked);
        *row.button = button;
    }
    QToolBar *bar = newToolBar(this, tr("ToolBar"));
    auto *empty = new QLabel(bar);
    empty->setFont(lucidaFont(11));
    empty->setGeometry(70, 40, 100, 25);
    addGap(bar, 2, 60);
}

void QConverterMainWindow::CreateToolBar()
{
    QToolBar *bar = newToolBar(this, tr("Open & Save File"));
    bar->setToolButtonStyle(Qt::ToolButtonIconOnly);
    // The captions have fixed places; these margins put each button above its own. A horizontal bar's layout takes
    // the first for the space above and the second for the space before its content.
    bar->layout()->setContentsMargins(1, 4, 3, 0);
    bar->layout()->setSpacing(5);
    addGap(bar, 2, 50);
    bar->addWidget(m_pMyOpenButton);
    addGap(bar, 5, 50);
    bar->addWidget(m_pMySaveButton);
    auto *filler = new QWidget(bar);
    filler->setFixedHeight(0);
    filler->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    bar->addWidget(filler);
    bar->addWidget(m_pMyHelpButton);
    auto *captions = new Captions(bar);
    captions->add(tr("Open"), QRect(9, 42, 60, 20));
    captions->add(tr("Save"), QRect(54, 42, 180, 20));
}

void QConverterMainWindow::CreateMenuBar()
{
    QMenu *application = menuBar()->addMenu(tr("&VelmoraMailConverter"));
    application->addActions({m_pAboutAction, m_pPreferencesAction});
    QMenu *file = menuBar()->addMenu(tr("&File"));
    file->addActions({m_pOpenAction, m_pSaveAction});
    QMenu *help = menuBar()->addMenu(tr("&Help"));
    help->addAction(m_pHelpAction);
    help->addSeparator();
    help->addActions({m_pEmailAction, m_pViewSupportAction, m_pTicketAction, m_pKnowledgeBaseAction});
}

void QConverterMainWindow::OnOpenEnter()
{
    setIcon(m_pMyOpenButton, imageHoverOpen);
}

void QConverterMainWindow::OnOpenLeave()
{
    setIcon(m_pMyOpenButton, imageOpen);
}

void QConverterMainWindow::OnSaveEnter()
{
    setIcon(m_pMySaveButton, imageHoverSave);
}

void QConverterMainWindow::OnSaveLeave()
{
    setIcon(m_pMySaveButton, imageSave);
}

void QConverterMainWindow::OnHelpEnter()
{
    setIcon(m_pMyHelpButton, imageHelp);
}

void QConverterMainWindow::OnHelpLeave()
{
    setIcon(m_pMyHelpButton, imageHelp);
}
