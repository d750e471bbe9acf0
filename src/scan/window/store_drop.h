#pragma once

#include <functional>

class QString;
class QWidget;

/// Lets a store be dropped on the widget from a file manager: one folder or one .olm file, whose path `take` gets.
/// Anything else is refused.
void takeDroppedStores(QWidget *widget, std::function<void(const QString &path)> take);
