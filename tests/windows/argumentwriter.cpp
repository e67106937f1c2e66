// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#include <QtCore/qcoreapplication.h>
#include <QtCore/qfile.h>

// argumentwriter FILE ARGUMENTS...
// Writes its arguments into FILE, one in a line, as the program itself reads them.
int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    QFile file(arguments.value(1));
    if (!file.open(QFile::WriteOnly))
        return 1;
    for (const QString &argument : arguments.mid(2))
        file.write(argument.toUtf8() + '\n');
    return 0;
}
