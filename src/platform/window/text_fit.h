#pragma once

#include <QFont>

class QAbstractButton;
class QLabel;

/// Names a font that stands in for "Lucida Grande", the face that every window here is laid out with, where the
/// system has none. Its letters are as wide, so that the fixed places of the forms hold. Needs the application.
void setFontFallback();

/// The windows' face at a size in points.
QFont lucidaFont(int points);

/// Gives a label of a fixed form the room that its text needs with this system's fonts, if the form gives less: up
/// and down alike, and to the right as far as its parent goes; where that is too little, the text is broken.
void fitToText(QLabel *label);

/// Gives a button of a fixed form the room that its text needs with this system's fonts, if the form gives less: up
/// and down alike, a push button to the left, any other to the right. Returns the pixels that it has grown in width.
int fitToText(QAbstractButton *button);
