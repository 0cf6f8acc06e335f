// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QString>

/// A temporary file that takes a shell command's output. Everybody may write to its folder, so that its name may stand
/// for another file at any moment: only the descriptor of its making is ever written to and read from. Used by one
/// thread at a time.
class UtilCommandOutput
{
public:
    /// Replaces whatever stands at strPath by an empty file that nobody else can open.
    explicit UtilCommandOutput(const QString& strPath);

    /// The name goes too, unless it stands for another file by now.
    ~UtilCommandOutput();
    UtilCommandOutput(const UtilCommandOutput&) = delete;
    UtilCommandOutput& operator=(const UtilCommandOutput&) = delete;

    /// False when no file could be made: there is nothing to redirect to.
    bool IsOpen() const { return m_iFd >= 0; }

    /// What a shell command redirects its output to: this very file, whatever its name stands for.
    QByteArray ShellPath() const;

    /// What the command wrote, its first iMaxLength bytes at most; empty when it cannot be read.
    QByteArray Read(int iMaxLength) const;

private:
    const QByteArray m_path;
    const int m_iFd;
};
