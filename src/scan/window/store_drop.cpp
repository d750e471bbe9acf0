#include "scan/window/store_drop.h"

#include <QDropEvent>
#include <QFileInfo>
#include <QMimeData>
#include <QUrl>
#include <QWidget>

#include <utility>

namespace
{
// The path of what is dragged, "" where it is no store.
QString storeIn(const QMimeData *data)
{
    const QList<QUrl> urls = data->urls();
    const QString path = urls.size() == 1 ? urls.first().toLocalFile() : QString();
    const QFileInfo file(path);
    const bool archive = file.isFile() && path.endsWith(QLatin1String(".olm"), Qt::CaseInsensitive);
    return archive || (!path.isEmpty() && file.isDir()) ? path : QString();
}

class StoreDrop : public QObject
{
public:
    StoreDrop(QWidget *widget, std::function<void(const QString &)> take)
        : QObject(widget), m_take(std::move(take))
    {
        widget->setAcceptDrops(true);
        widget->installEventFilter(this);
    }

    bool eventFilter(QObject *, QEvent *event) override
    {
        const bool enters = event->type() == QEvent::DragEnter;
        if (!enters && event->type() != QEvent::Drop)
            return false;
        auto *drop = static_cast<QDropEvent *>(event);
        const QString path = storeIn(drop->mimeData());
        drop->setDropAction(Qt::CopyAction); // a store stays where it is
        drop->setAccepted(!path.isEmpty());
        if (!enters && !path.isEmpty())
            m_take(path);
        return true;
    }

private:
    std::function<void(const QString &)> m_take;
};
} // namespace

void takeDroppedStores(QWidget *widget, std::function<void(const QString &path)> take)
{
    new StoreDrop(widget, std::move(take)); // the widget's own
}
