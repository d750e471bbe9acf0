#pragma once

#include <QByteArray>
#include <QString>

#include <cstdio>

/// Writes one JSON document (RFC 8259) to a stream as it goes, in UTF-8, so that a store of any size needs no
/// document in memory. The caller keeps begin and end calls in balance.
class JsonWriter
{
public:
    /// Writes to a stream, which stays open.
    explicit JsonWriter(std::FILE *stream);
    /// Ends the document with a line feed and flushes the stream.
    ~JsonWriter();
    JsonWriter(const JsonWriter &) = delete;
    JsonWriter &operator=(const JsonWriter &) = delete;

    void beginObject() { open('{'); }
    void endObject() { close('}'); }
    void beginArray() { open('['); }
    void endArray() { close(']'); }
    /// The name of the member that comes next in an object.
    JsonWriter &key(const char *name);
    /// The value of the key before, or an item of an array.
    void value(const QString &text);
    void value(qint64 number);
    /// The value null, likewise.
    void null();

private:
    void open(char bracket);
    void close(char bracket);
    void separate();
    void writeText(const QString &text);
    void putEscaped(const QByteArray &utf8);
    void flushIfLarge();

    std::FILE *m_stream;
    QByteArray m_buffer;
    bool m_needsComma = false;
};
