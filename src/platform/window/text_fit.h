#pragma once

#include <QFont>

#include <functional>

class QAbstractButton;
class QLabel;
class QWidget;

/// Names a font that stands in for "Lucida Grande", the face that every window here is laid out with, where the
/// system has none. Its letters are as wide, so that the fixed places of the forms hold. Needs the application.
void setFontFallback();

/// The windows' face at a size in points.
QFont lucidaFont(int points);

/// Gives a label of a fixed form the room that its text needs with this system's fonts, if the form gives less: up
/// and down alike, and to the right as far as its parent goes; where that is too little, the text is broken.
void fitToText(QLabel *label);

/// Makes a widget's font smaller, down to 7 points, until `fits` says that its text has room: for a desktop's very large
/// fonts, where a fixed form has no more to give.
void shrinkFont(QWidget *widget, const std::function<bool()> &fits);

/// Gives a button of a fixed form the room that its text needs with this system's fonts, if the form gives less: up
/// and down alike, a push button to the left, any other to the right. Returns the pixels that it has grown in width.
int fitToText(QAbstractButton *button);
