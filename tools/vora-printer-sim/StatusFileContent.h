// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QStringList>

#include <optional>

class QRandomGenerator;

/// What a status file holds.
enum enFileContent
{
    enFileGood,      ///< the printer's reply
    enFileMissing,   ///< there is no file
    enFileEmpty,     ///< no bytes
    enFileTruncated, ///< the reply without its end
    enFileRandom,    ///< random bytes
    enFileMutated,   ///< the reply with some bytes replaced
    enFileOversized, ///< more than a reader takes, cut in the middle of a field there
    enFileTrailing,  ///< the reply with more behind it than a reader takes
    enFileContentCount
};

/// Value for a name such as "truncated"; none for any other text.
std::optional<enFileContent> FileContentByName(const QString& strName);
/// All these names, in the order of the values.
QStringList FileContentNames();

/// The bytes of the file; none of a missing one. The reply must not end a reader itself (HasFatalSupplies); no other
/// content made of it does then. Called from any thread that has random to itself.
QByteArray FileContent(enFileContent enContent, const QByteArray& reply, QRandomGenerator& random);

/// True for a reply with a supplies record of more than 65 data bytes behind a well-formed beginning: a reader of the
/// reply ends there by design.
bool HasFatalSupplies(const QByteArray& reply);
