#pragma once

#include <QMainWindow>

class QConverterMainWindow : public QMainWindow
{
    Q_OBJECT

public:
    QConverterMainWindow();
};
