#pragma once

#include <QLabel>

/// A label for text with a path in it: it breaks lines inside a long path too, where a label would cut it, and it
/// never takes the text as markup.
class PathLabel : public QLabel
{
    Q_OBJECT

public:
    explicit PathLabel(QWidget *parent = nullptr);

    /// The height in pixels that the text needs at this width.
    int neededHeight(int labelWidth) const;

protected:
    void paintEvent(QPaintEvent *event) override;
};
