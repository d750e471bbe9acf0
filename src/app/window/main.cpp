#include "app/shared_state.h"
#include "app/window/main_window.h"
#include "app/window/translations.h"
#include "app/window/window_state.h"
#include "platform/freed_memory.h"
#include "platform/window/text_fit.h"

#include <QApplication>
#include <QDir>
#include <QIcon>
#include <QMessageBox>
#include <QTextCodec>

namespace
{
// Where the program is when it is started straight from its mounted disk image.
const char diskImagePath[] = "/Volumes/QRT/VelmoraMailConverter.app/Contents/MacOS";

QtMessageHandler writeMessage = nullptr;

// The folder tree's style sheet has a property that the toolkit doesn't know, and says so at every painting anew.
void leaveOutKnownWarning(QtMsgType type, const QMessageLogContext &context, const QString &text)
{
    if (text != QLatin1String("Unknown property alternate-color"))
        writeMessage(type, context, text);
}

void findResources()
{
    QDir place(QCoreApplication::applicationDirPath());
    place.cdUp();
    place.cd(QStringLiteral("Resources"));
    strPlistPathLink = place.absolutePath();
    HelpFilePath = strPlistPathLink;
    strPlistPath = strPlistPathLink + QStringLiteral("/MailConverterLink.plist");
}
} // namespace

int main(int argc, char *argv[])
{
    keepFreedMemory();
    QCoreApplication::setSetuidAllowed(true);
    // Dialogs have fixed sizes in pixels: they and their texts grow together, by fractions too.
    QCoreApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    QGuiApplication::setHighDpiScaleFactorRoundingPolicy(Qt::HighDpiScaleFactorRoundingPolicy::PassThrough);
    QApplication application(argc, argv);
    QGuiApplication::setDesktopFileName(
        QStringLiteral("com.example.VelmoraMailConverter")); // whose icon a panel shows
    writeMessage = qInstallMessageHandler(leaveOutKnownWarning);
    // File names are bytes in UTF-8, whatever the locale says (the C locale would turn them into "?").
    QTextCodec::setCodecForLocale(QTextCodec::codecForName("UTF-8"));
    QApplication::setWindowIcon(QIcon(QStringLiteral(":/images/img_Application.png")));
    setFontFallback();
    installTranslations(&application);

    findResources();
    if (QCoreApplication::applicationDirPath().toLatin1() == diskImagePath) {
        QMessageBox::information(nullptr, QStringLiteral("Velmora Kestrin"),
                                 QStringLiteral("Kindly copy the VelmoraMailConverter \nexecutable in the "
                                                "Applications folder and run from there."));
        return 0;
    }
    QConverterMainWindow window;
    pConverterWin = &window;
    window.setMinimumSize(900, 640);
    window.setWindowTitle(QStringLiteral("Velmora Mail Converter"));
    window.show();
    window.ShowParseWindow();
    return QApplication::exec();
}
