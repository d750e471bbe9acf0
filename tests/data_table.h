#pragma once

#include <QtTest>

#include <functional>

Q_DECLARE_METATYPE(std::function<void()>)

/// A test's rows: what is checked of each, then a call for each row with its name and values. The test runs
/// them by checkRow(). By then the table is gone: a check may hold the test object and copies, no references.
///
///     void depth_data()
///     {
///         const DataTable row([](const QString &path, int depth) { QCOMPARE(depthOf(path), depth); });
///         row("at the top", "a", 1);
///     }
///     void depth() { checkRow(); }
template <typename Check>
class DataTable;

template <typename... Values>
class DataTable<std::function<void(Values...)>>
{
public:
    explicit DataTable(const std::function<void(Values...)> &check) : m_check(check)
    {
        QTest::addColumn<std::function<void()>>("check");
    }
    void operator()(const QByteArray &rowName, const std::decay_t<Values> &...values) const
    {
        QTest::newRow(rowName.constData()) << std::function<void()>(std::bind(m_check, values...));
    }

private:
    std::function<void(Values...)> m_check;
};

template <typename Check>
DataTable(Check) -> DataTable<decltype(std::function(std::declval<Check>()))>;

/// Checks the row whose turn it is.
inline void checkRow()
{
    QFETCH(std::function<void()>, check);
    check();
}
