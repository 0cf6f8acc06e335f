// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "StatusFileContent.h"

#include "ReplyLayout.h"
#include "UtilStatusQuery.h"

#include <QRandomGenerator>

#include <algorithm>
#include <array>

namespace {

constexpr int c_iReaderSize = std::tuple_size_v<StatusBuffer>;

constexpr std::array<QLatin1String, enFileContentCount> c_nameList = {
    QLatin1String("good"),   QLatin1String("missing"), QLatin1String("empty"),     QLatin1String("truncated"),
    QLatin1String("random"), QLatin1String("mutated"), QLatin1String("oversized"), QLatin1String("trailing"),
};

QByteArray RandomBytes(int iSize, QRandomGenerator& random)
{
    QByteArray bytes(iSize, '\0');
    std::generate(bytes.begin(), bytes.end(), [&random] { return static_cast<char>(random.bounded(256)); });
    return bytes;
}

QByteArray Mutated(QByteArray reply, QRandomGenerator& random)
{
    const int iSize = static_cast<int>(reply.size());
    for (int i = random.bounded(1, 5); i > 0 && iSize > 0; --i) {
        reply[random.bounded(iSize)] = static_cast<char>(random.bounded(256));
    }
    return reply;
}

/// A reply whose vendor name is longer than all that a reader takes.
QByteArray Oversized(const QByteArray& reply, QRandomGenerator& random)
{
    QByteArray bytes = reply.left(12).leftJustified(12, '\0');
    bytes += QByteArray::fromHex("1000");
    return bytes + RandomBytes(0x1000, random) + reply.mid(12);
}

} // namespace

std::optional<enFileContent> FileContentByName(const QString& strName)
{
    const auto found = std::find(c_nameList.begin(), c_nameList.end(), strName);
    return found == c_nameList.end() ? std::nullopt
                                     : std::optional(static_cast<enFileContent>(found - c_nameList.begin()));
}

QStringList FileContentNames()
{
    return {c_nameList.begin(), c_nameList.end()};
}

QByteArray FileContent(enFileContent enContent, const QByteArray& reply, QRandomGenerator& random)
{
    QByteArray bytes;
    do {
        switch (enContent) {
        case enFileGood: return reply;
        case enFileTruncated: bytes = reply.left(random.bounded(std::max(static_cast<int>(reply.size()), 1))); break;
        case enFileRandom: bytes = RandomBytes(random.bounded(1, c_iReaderSize + 1), random); break;
        case enFileMutated: bytes = Mutated(reply, random); break;
        case enFileOversized: bytes = Oversized(reply, random); break;
        case enFileTrailing: bytes = reply + RandomBytes(c_iReaderSize, random); break;
        case enFileMissing:
        case enFileEmpty:
        case enFileContentCount: return QByteArray();
        }
    } while (HasFatalSupplies(bytes));
    return bytes;
}

bool HasFatalSupplies(const QByteArray& reply)
{
    return ReplyLayout(reply).Fault() == enReplyFatalSupplies;
}
