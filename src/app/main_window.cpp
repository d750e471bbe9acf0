#include "app/main_window.h"

QConverterMainWindow::QConverterMainWindow() = default;
