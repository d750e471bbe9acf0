#pragma once

#include <QString>

#include <string_view>
#include <vector>

/// Bytes that can be read anywhere and never written. Positions and sizes in bytes.
class RandomAccess
{
public:
    RandomAccess() = default;
    virtual ~RandomAccess() = default;
    RandomAccess(const RandomAccess &) = delete;
    RandomAccess &operator=(const RandomAccess &) = delete;

    /// The size when the source was opened; reads may end before it.
    virtual qint64 size() const = 0;
    /// Reads up to `count` bytes at `position` and gives how many there were. Fewer only where the source ends or
    /// fails; a position outside it has none.
    virtual qint64 read(qint64 position, char *to, qint64 count) = 0;
};

/// Bytes in memory; the owner keeps them.
class MemoryBytes final : public RandomAccess
{
public:
    explicit MemoryBytes(std::string_view bytes) : m_bytes(bytes) {}
    qint64 size() const override { return static_cast<qint64>(m_bytes.size()); }
    qint64 read(qint64 position, char *to, qint64 count) override;

private:
    std::string_view m_bytes;
};

/// A file, opened read-only.
class FileBytes final : public RandomAccess
{
public:
    FileBytes() = default;
    ~FileBytes() override;

    /// False if that fails; errorString() then names the path. A folder can be opened, but nothing be read in it.
    bool open(const QString &path);
    /// The descriptor, -1 while nothing is open.
    int descriptor() const { return m_file; }
    QString errorString() const { return m_error; }

    qint64 size() const override { return m_size; }
    qint64 read(qint64 position, char *to, qint64 count) override;

private:
    int m_file = -1;
    qint64 m_size = 0;
    QString m_error;
};

/// Looks at a source through one buffer. A jump reads little, going on from where the buffer ends reads more and
/// more at a time.
class ReadBuffer
{
public:
    explicit ReadBuffer(RandomAccess *source) : m_source(source) {}

    /// All the buffered bytes from `position` on: at least `atLeast` (up to largestBlock), fewer only where the
    /// source ends. Valid until the next call.
    std::string_view from(qint64 position, size_t atLeast = 1);
    /// `count` bytes at `position`, fewer only where the source ends. Valid until the next call.
    std::string_view at(qint64 position, size_t count) { return from(position, count).substr(0, count); }

    static constexpr size_t smallestBlock = 4 * 1024;
    static constexpr size_t largestBlock = 256 * 1024;

private:
    RandomAccess *m_source;
    std::vector<char> m_block;
    qint64 m_start = 0;
    size_t m_filled = 0;
    size_t m_blockBytes = smallestBlock;
};
