// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

#include "QtCompat.h"
#include "TestFiles.h"

#include <QByteArrayList>
#include <QTemporaryDir>

/// Stands for a command of the print system for as long as it lives: found first in PATH, notes the arguments of every
/// call and then does what the script says.
class FakeCommand
{
public:
    explicit FakeCommand(const QString& strName, const QByteArray& script = QByteArray())
        : m_path(qgetenv("PATH")), m_strCallsPath(m_folder.filePath(u"calls"_s))
    {
        // One write for each call, so that calls side by side do not mix.
        WriteScript(m_folder.filePath(strName),
                    "printf '%s\\0' \"$#\" \"$@\" >> " + QFile::encodeName(m_strCallsPath) + '\n' + script);
        qputenv("PATH", QFile::encodeName(m_folder.path()) + ':' + m_path);
    }
    ~FakeCommand() { qputenv("PATH", m_path); }
    FakeCommand(const FakeCommand&) = delete;
    FakeCommand& operator=(const FakeCommand&) = delete;

    /// The arguments of each call.
    QList<QByteArrayList> Calls() const
    {
        QList<QByteArrayList> listCall;
        QByteArrayList listWord = ReadFile(m_strCallsPath).split('\0');
        listWord.removeLast(); // behind the last zero
        while (!listWord.isEmpty()) {
            const int iCount = listWord.takeFirst().toInt();
            listCall.append(listWord.mid(0, iCount));
            listWord = listWord.mid(iCount);
        }
        return listCall;
    }

private:
    const QByteArray m_path;
    QTemporaryDir m_folder;
    const QString m_strCallsPath;
};
