#include "platform/read_ahead.h"
#include "store_files.h"
#include "text/line_reader.h"

class TestLineReader : public QObject
{
    Q_OBJECT

private slots:
    // Whatever part of a file was read along with its opening, its lines are the same, and so again from its start.
    void fileReadAhead_data()
    {
        QTest::addColumn<int>("startBytes");
        for (const int bytes : {0, 1, 100, 1 << 16})
            QTest::addRow("%d bytes", bytes) << bytes;
    }
    void fileReadAhead()
    {
        QFETCH(int, startBytes);
        QTemporaryDir folder;
        QStringList paths;
        QList<QByteArrayList> expected;
        for (int i = 0; i < 200; ++i) { // more than are read ahead at once
            QByteArrayList lines;
            for (int line = 0; line < i; ++line)
                lines.append(QByteArray(line * 7 % 90, 'x') + '\n');
            if (i % 3 == 0)
                lines.append("no line feed");
            expected.append(lines);
            QByteArray bytes = lines.join();
            if (i % 2 == 0)
                bytes.replace('\n', "\r\n");
            writeFiles(folder.path(), {{QString::number(i), bytes}});
            paths.append(folder.filePath(QString::number(i)));
        }
        ReadAhead<ByteSource> files(paths, [=](const QString &path) {
            return ByteSource::ofFile(path, static_cast<size_t>(startBytes));
        });
        LineReader reader(LineReader::Mode::Text);
        reader.setBlockBytes(64);
        for (int i = 0; i < paths.size(); ++i) {
            QVERIFY(reader.open(files.next()));
            QCOMPARE(linesOf(&reader), expected.at(i));
            reader.seek(0);
            QCOMPARE(linesOf(&reader), expected.at(i));
            QVERIFY(reader.atEnd());
        }
    }

    // A line read in pieces is the same line, whatever their size; none ends within a character or a CR LF.
    void pieces()
    {
        const QByteArray line = "a\xC3\xA9\xE2\x82\xAC\r\xF0\x9F\x98\x80\x80\x80\x80\x80\xFF\r\r\n";
        const QByteArray bytes = line + "next\n" + QByteArray(100, 'x') + "\nlast";
        for (size_t most = LineReader::shortestPiece; most < 30; ++most) {
            LineReader reader(LineReader::Mode::Text);
            reader.setBlockBytes(4);
            QVERIFY(reader.open(ByteSource::ofBytes({bytes.constData(), static_cast<size_t>(bytes.size())})));
            QByteArray joined;
            QString text;
            while (!joined.endsWith('\n')) {
                const std::string_view piece = *reader.readLine(most);
                QVERIFY(piece.size() <= most);
                joined.append(piece.data(), static_cast<int>(piece.size()));
                text += wholeLineText(piece);
            }
            QCOMPARE(joined, line.left(line.size() - 2) + '\n');
            QCOMPARE(text, QString::fromUtf8(joined));
            QVERIFY(reader.peek(100) ==
                    std::string_view(bytes.constData()).substr(static_cast<size_t>(line.size()), 100));
            reader.skipLine();
            reader.readLine(most);
            reader.skipLine();
            QCOMPARE(linesOf(&reader), QByteArrayList{"last"});
        }
    }

    void noRegularFile()
    {
        QTemporaryDir folder;
        const QString missing = folder.filePath("missing");
        ReadAhead<ByteSource> files({missing, folder.path()},
                                    [](const QString &path) { return ByteSource::ofFile(path, 1); });
        LineReader reader(LineReader::Mode::Bytes);
        QVERIFY(!reader.open(files.next()));
        QCOMPARE(reader.errorString(), missing + ": No such file or directory");
        QVERIFY(!reader.open(files.next()));
        QCOMPARE(reader.errorString(), folder.path() + ": not a regular file");
        QVERIFY(!reader.readLine());
    }

private:
    static QByteArrayList linesOf(LineReader *reader)
    {
        QByteArrayList lines;
        while (const std::optional<std::string_view> line = reader->readLine())
            lines.append(QByteArray(line->data(), static_cast<int>(line->size())));
        return lines;
    }
};

QTEST_GUILESS_MAIN(TestLineReader)
#include "test_line_reader.moc"
