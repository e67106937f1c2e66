// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#include "platform/desktopfile.h"

#include <QtCore/qfile.h>

using namespace Qt::StringLiterals;

namespace
{

constexpr qint64 largestFile = 1 << 20; // nobody's desktop file comes near

// The escapes of every value of type string.
QString withoutEscapes(QStringView text)
{
    QString result;
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (text[i] != u'\\' || i + 1 == text.size()) {
            result += text[i];
            continue;
        }
        switch (text[++i].unicode()) {
        case u's':
            result += u' ';
            break;
        case u'n':
            result += u'\n';
            break;
        case u't':
            result += u'\t';
            break;
        case u'r':
            result += u'\r';
            break;
        default:
            result += text[i];
        }
    }
    return result;
}

} // namespace

std::optional<DesktopFile> DesktopFile::read(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly) || file.size() > largestFile)
        return std::nullopt;
    const QStringList lines = QString::fromUtf8(file.readAll()).split(u'\n');
    DesktopFile result;
    bool inGroup = false;
    bool hasGroup = false;
    for (const QString &line : lines) {
        if (line.startsWith(u'[')) {
            inGroup = line.trimmed() == "[Desktop Entry]"_L1;
            hasGroup = hasGroup || inGroup;
        } else if (const auto equals = line.indexOf(u'='); inGroup && equals > 0) {
            result.m_values.insert(line.first(equals).trimmed(),
                withoutEscapes(QStringView(line).sliced(equals + 1).trimmed()));
        }
    }
    return hasGroup ? std::optional(result) : std::nullopt;
}

// An argument in quotes, with what a shell would take for something else escaped; then, for the
// value itself, every backslash escaped once more, and the end of a line written as an escape; and
// a per cent sign is written twice.
QString commandOfProgram(const QString &program)
{
    QString quoted;
    for (const QChar character : program) {
        if (u"\"`$\\"_s.contains(character))
            quoted += u'\\';
        quoted += character;
    }
    quoted.replace(u'\\', u"\\\\"_s).replace(u'%', u"%%"_s);
    return u'"' + quoted.replace(u'\n', u"\\n"_s).replace(u'\r', u"\\r"_s) + u'"';
}

QString programOfCommand(const QString &command)
{
    const QString text = command.trimmed();
    QString program;
    if (!text.startsWith(u'"')) {
        program = text.section(u' ', 0, 0);
    } else {
        qsizetype i = 1;
        for (; i < text.size() && text[i] != u'"'; ++i) {
            if (text[i] == u'\\' && i + 1 < text.size())
                ++i;
            program += text[i];
        }
        if (i == text.size())
            return {}; // the quote never ends
    }
    return program.replace(u"%%"_s, u"%"_s);
}
