// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "CodeNames.h"

#include "UtilStatusIdParser.h"

#include <algorithm>

namespace {

constexpr std::array<const char*, enStatusCount> c_pStateNameList = {
#define VORA_STATE(enStatus, wRawCode, pName, ...) pName,
#define VORA_UNSENT_STATE(enStatus, pName, ...) pName,
#include "StatusCodes.def"
};

constexpr std::array<const char*, enErrorCount> c_pErrorNameList = {
#define VORA_ERROR(enError, wRawCode, pName, ...) pName,
#define VORA_UNSENT_ERROR(enError, pName, ...) pName,
#include "StatusCodes.def"
};

template <typename Names>
QString NameOf(int iStatus, const Names& listName)
{
    const bool bInTable = iStatus >= 0 && iStatus < static_cast<int>(listName.size());
    return QString::fromLatin1(bInTable ? listName[static_cast<std::size_t>(iStatus)] : listName.front());
}

template <typename Code, typename Names, typename Codes>
std::optional<Code> CodeByName(const QString& strName, const Names& listName, const Codes& listCode)
{
    const auto code = std::find_if(listCode.begin(), listCode.end(), [&strName, &listName](const auto& row) {
        return NameOf(row.enStatus, listName) == strName;
    });
    return code == listCode.end() ? std::nullopt : std::optional<Code>(static_cast<Code>(code->dwRawCode));
}

template <typename Names, typename Codes>
QStringList SentNames(const Names& listName, const Codes& listCode)
{
    QStringList listText;
    for (const auto& row : listCode) {
        listText.append(NameOf(row.enStatus, listName));
    }
    return listText;
}

} // namespace

std::optional<quint8> StateCodeByName(const QString& strName)
{
    return CodeByName<quint8>(strName, c_pStateNameList, c_stStatusCodeList);
}

std::optional<quint16> ErrorCodeByName(const QString& strName)
{
    return CodeByName<quint16>(strName, c_pErrorNameList, c_stErrorCodeList);
}

QStringList StateNames()
{
    return SentNames(c_pStateNameList, c_stStatusCodeList);
}

QStringList ErrorNames()
{
    return SentNames(c_pErrorNameList, c_stErrorCodeList);
}

QString StateName(int iStatus)
{
    return NameOf(iStatus, c_pStateNameList);
}

QString ErrorName(int iError)
{
    return NameOf(iError, c_pErrorNameList);
}
