#pragma once

#include <QtTest>

/// A test's data: the types and names of its columns, then a call for each row with the row's name and its values.
///
///     const DataTable<QString, int> row("path", "depth");
///     row("at the top", "a", 1);
template <typename... Values>
class DataTable
{
public:
    template <typename... Names>
    explicit DataTable(Names... names)
    {
        static_assert(sizeof...(Names) == sizeof...(Values), "a name for each column");
        (QTest::addColumn<Values>(names), ...);
    }
    void operator()(const QByteArray &rowName, const Values &...values) const
    {
        QTestData &row = QTest::newRow(rowName.constData());
        (row << ... << values);
    }
};
