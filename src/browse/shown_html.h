#pragma once

#include <QString>

/// How deep elements may lie in one another in what the window shows. The web view crashes at some 17,000 nested
/// tables, each of which it gives a body, a row and a cell.
constexpr int shownDepth = 1000;
/// How many characters the window shows: the web view lays out some four million a second.
constexpr int shownCharacters = 256 * 1024;

/// What the window gives its web view of a message's text.
struct ShownHtml {
    QString html;
    bool isCut = false; ///< it ends before the text does
};

/// Cuts a text where it is too long or too deep for the web view, and takes out of it what makes a short text endless:
/// copies of copies of a drawing ("<use xlink:href=...>") become an element of no meaning. The text is not parsed as a
/// browser does: what looks like a tag counts as one, in comments and values too, so that nothing can hide there.
ShownHtml shownHtml(const QString &html);
