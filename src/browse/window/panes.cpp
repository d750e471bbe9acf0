#include "app/window/main_window.h"

#include "browse/window/folder_view.h"
#include "browse/window/header_pane.h"
#include "browse/window/list_filter.h"
#include "browse/window/mail_view.h"
#include "browse/window/row_item.h"

#include <QHeaderView>
#include <QSplitter>
#include <QVBoxLayout>

namespace
{
constexpr int folderColumns = 8;
constexpr int messageColumns = 5;
constexpr int listWidth = 270; ///< the least, pixels

const QColor treeGround(223, 226, 235);
const QColor selectionGround(154, 154, 200); ///< as in the tree's style sheet; the pictures stand out on it

// The tree has a ground of its own, so its text needs colours of its own, whatever the desktop's are.
void setTreeColours(QTreeWidget *tree)
{
    tree->setBackgroundRole(QPalette::Window);
    tree->setAutoFillBackground(true);
    QPalette palette = tree->palette();
    palette.setColor(QPalette::Base, treeGround);
    palette.setColor(QPalette::Text, Qt::black);
    palette.setColor(QPalette::WindowText, Qt::black); // the arrows
    palette.setColor(QPalette::HighlightedText, Qt::black);
    tree->setPalette(palette);
}

void setListColours(QTreeWidget *list)
{
    QPalette palette = list->palette();
    palette.setColor(QPalette::Highlight, selectionGround);
    palette.setColor(QPalette::HighlightedText, Qt::black);
    list->setPalette(palette);
}

// The caption's leading blanks are wide in a large font: it is set smaller where the list at its narrowest would not
// show it.
void fitHeader(QHeaderView *header, const QString &caption, int width)
{
    QFont font = header->font();
    while (font.pointSize() > 6 && QFontMetrics(font).horizontalAdvance(caption) > width)
        font.setPointSize(font.pointSize() - 1);
    header->setFont(font);
}
} // namespace

void QConverterMainWindow::CreateLeftDockWindows()
{
    auto *splitter = new QSplitter(this);
    m_pFolderTree = createFolderTree();
    m_pMessageList = createMessageList();
    splitter->addWidget(m_pFolderTree);
    splitter->addWidget(m_pMessageList);
    splitter->addWidget(createPreviewFrame());
    splitter->setChildrenCollapsible(false);
    splitter->setStretchFactor(1, 1);
    splitter->setStretchFactor(2, 2);
    splitter->setStyleSheet(
        QStringLiteral("QSplitter::handle:vertical   {height: 1px; image: url(:images/img_Vsplitter.png);}"
                       "QSplitter::handle:horizontal {width:  1px; image: url(:images/img_Hsplitter.png);}"
                       "QSplitter::handle {border: solid #ABABAB; background: #ABABAB;}"));
    setCentralWidget(splitter);
}

QTreeWidget *QConverterMainWindow::createFolderTree()
{
    auto *tree = new FolderView;
    tree->setObjectName(QStringLiteral("folderTree"));
    tree->setColumnCount(folderColumns);
    tree->setHeaderLabel(QString());
    for (int column = 1; column < folderColumns; ++column)
        tree->hideColumn(column);
    tree->header()->resizeSection(0, 700);
    tree->setMinimumWidth(240);
    tree->setFrameStyle(int{QFrame::StyledPanel} | int{QFrame::Plain});
    tree->setAccessibleName(tr("Folders"));
    tree->setItemDelegate(new FolderDelegate(tree));
    connect(tree, &FolderView::chosenByKey, this, &QConverterMainWindow::ShowindivisualMailItemsInfo);
    connect(tree, &FolderView::leftByKey, this, &QConverterMainWindow::enterMessageList);
    setTreeColours(tree);
    tree->setStyleSheet(
        QStringLiteral("QTreeView {    selection-background-color: rgb(154,154,200);    alternate-color: "
                       "rgb(223,226,235);    "
                       "alternate-background-color: rgb(223,226,235);    show-decoration-selected: 1;}"));
    return tree;
}

QTreeWidget *QConverterMainWindow::createMessageList()
{
    auto *list = new QTreeWidget;
    list->setObjectName(QStringLiteral("messageList"));
    list->setColumnCount(messageColumns);
    const QString caption = QStringLiteral("                               ") + tr("Mail");
    list->setHeaderLabels({QStringLiteral("  "), caption, QString(), QString(), QString()});
    for (int column : {0, 3, 4})
        list->hideColumn(column);
    list->header()->setStretchLastSection(false);
    list->header()->setSectionResizeMode(1, QHeaderView::Stretch);
    list->header()->resizeSection(2, 50);
    // Rows stand in the order of their records until the user picks a column to sort by.
    list->header()->setSortIndicator(-1, Qt::AscendingOrder);
    list->setSortingEnabled(false);
    list->setMinimumWidth(listWidth);
    fitHeader(list->header(), caption, listWidth - 50 - 40);
    list->setItemDelegate(new RowDelegate(list));
    new ListFilter(list);
    list->setRootIsDecorated(false);
    list->setUniformRowHeights(true);
    list->setAlternatingRowColors(true);
    list->setAccessibleName(tr("Messages"));
    setListColours(list);
    return list;
}

QWidget *QConverterMainWindow::createPreviewFrame()
{
    m_pHeaderPane = new HeaderPane;
    m_pHeaderPane->setObjectName(QStringLiteral("headerPane"));
    m_pHeaderPane->setMinimumWidth(330);
    m_pHeaderPane->setAccessibleName(tr("Message headers"));
    m_pSecondPane = new QTextBrowser;
    m_pSecondPane->hide();
    m_pSecondPane->setAccessibleName(tr("Message text"));
    m_pWebView = new MailView;
    m_pWebView->setMinimumWidth(330);
    m_pWebView->hide();
    m_pWebView->setAccessibleName(tr("Message text"));

    // Without a message the pane's own ground fills the frame below the headers.
    auto *frame = new QFrame;
    frame->setBackgroundRole(QPalette::Base);
    frame->setAutoFillBackground(true);
    auto *layout = new QVBoxLayout(frame);
    layout->setSpacing(0);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_pHeaderPane);
    layout->addWidget(m_pWebView, 1);
    layout->addWidget(m_pSecondPane);
    layout->addStretch(0);
    return frame;
}
