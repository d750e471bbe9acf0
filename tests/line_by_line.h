#pragma once

#include <QFile>
#include <QString>
#include <QStringList>

/// The copy of a mailbox as a list of lines that are read by the toolkit, with all that the real one avoids.
class LineByLine
{
public:
    QByteArray copy(const QString &path)
    {
        QFile file(path);
        file.open(QIODevice::ReadOnly | QIODevice::Text);
        while (!file.atEnd()) {
            const QByteArray bytes = file.readLine();
            QString line = QString::fromUtf8(bytes.constData(), bytes.size());
            if (line.isEmpty())
                continue;
            repair(&line);
            m_previous = line;
            m_lines.append(line);
            if (m_lines.size() == 1000000) {
                write(m_lines.join(""));
                m_lines.clear();
            }
        }
        QStringList chunk;
        for (const QString &line : m_lines) {
            chunk.append(line);
            if (chunk.size() == 100000) {
                write(chunk.join(""));
                chunk.clear();
            }
        }
        write(chunk.join(""));
        return m_written;
    }

private:
    void repair(QString *line)
    {
        if (line->startsWith("Content-Type: text/plain;") || line->startsWith("Content-Type: text/html;"))
            m_inText = true;
        if (!m_inText || !line->startsWith("From ") || line->startsWith("From - "))
            return;
        const bool dashes = m_previous.startsWith("--");
        const bool closes = m_previous.endsWith("--\n") || m_previous.endsWith("--\r\n");
        if (m_previous == "\n" || (dashes && closes))
            m_inText = false;
        else
            line->prepend('>');
    }
    void write(const QString &chunk) { m_written += chunk.toLatin1() + '\n'; }

    bool m_inText = false;
    QString m_previous;
    QStringList m_lines;
    QByteArray m_written;
};
