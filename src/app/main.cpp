#include "app/main_window.h"

#include <QApplication>

int main(int argc, char *argv[])
{
    QApplication application(argc, argv);
    QConverterMainWindow window;
    window.show();
    return QApplication::exec();
}
