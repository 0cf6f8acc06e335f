// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "StatusOptions.h"

#include "ReplyLabels.h"
#include "ToolError.h"

#include <QCommandLineParser>

#include <utility>

namespace {

const char* const c_pHelp[enLanguageCount] = {
    R"(Usage: vora-status [OPTION]... [FILE]...
Show what the status replies of printers say: one line for each printer.

With FILE, decode these status files; without, ask about all printers that the
printer driver package lists.

      --udp ADDRESS  ask the printer at this IPv4 address instead
      --lang zh|en   Chinese or English (default: as the locale says)
      --fields       print every field of the replies instead
      --hex          print the replies byte by byte, field by field
      --json         print one JSON document for programs
      --prometheus   print metrics of all listed printers for Prometheus
      --output FILE  with --prometheus: replace this file
      --watch        print again after every change, until interrupted
      --version      print the version
  -h, --help         print this help

Exit status: 0 all good; 1 a printer has errors; 2 a reply was rejected, a
printer was not reached or the output was not written; 64 wrong usage.
With --prometheus: 0 written, 2 not written.
)",
    R"(用法：vora-status [选项]... [文件]...
显示打印机状态应答的内容：每台打印机一行。

给出文件时，解读这些状态文件；否则解读打印机驱动包所列出的全部打印机。

      --udp 地址     改为询问此IPv4地址上的打印机
      --lang zh|en   中文或英文（默认：按语言环境）
      --fields       改为输出应答的全部字段
      --hex          逐字节、逐字段输出应答
      --json         输出一个供程序使用的JSON文档
      --prometheus   为Prometheus输出所列全部打印机的指标
      --output 文件  与--prometheus同用：替换此文件
      --watch        每次变化后重新输出，直到被中断
      --version      输出版本
  -h, --help         输出此帮助

退出状态：0 一切正常；1 有打印机出错；2 有应答被拒绝、有打印机没有联系上
或者无法写出结果；64 用法错误。使用--prometheus时：0 已写出；2 没有写出。
)"};

/// The language of the locale: of LC_ALL, LC_MESSAGES and LANG the first that is not empty decides.
enLanguage LocaleLanguage()
{
    for (const char* pVariable : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
        const QByteArray value = qgetenv(pVariable);
        if (!value.isEmpty()) {
            return value.startsWith("zh") ? enLanguageChinese : enLanguageEnglish;
        }
    }
    return enLanguageEnglish;
}

} // namespace

void StatusOptions::Parse(const QStringList& listArgument)
{
    const QCommandLineOption help(QStringList{u"h"_s, u"help"_s});
    const QCommandLineOption lang(u"lang"_s, QString(), u"zh|en"_s);
    const QCommandLineOption udp(u"udp"_s, QString(), u"ADDRESS"_s);
    const QCommandLineOption json(u"json"_s);
    const QCommandLineOption hex(u"hex"_s);
    const QCommandLineOption watch(u"watch"_s);
    const QCommandLineOption fields(u"fields"_s);
    const QCommandLineOption prometheus(u"prometheus"_s);
    const QCommandLineOption output(u"output"_s, QString(), u"FILE"_s);
    const QCommandLineOption version(u"version"_s);
    QCommandLineParser parser;
    parser.addOptions({help, lang, udp, json, hex, watch, fields, prometheus, output, version});
    const bool bParsed = parser.parse(listArgument);

    const QString strLang = parser.value(lang);
    const bool bChinese = strLang == QLatin1String("zh");
    const bool bEnglish = strLang == QLatin1String("en");
    m_enLang = bChinese ? enLanguageChinese : bEnglish ? enLanguageEnglish : LocaleLanguage();
    QStringList listFormat;
    for (const auto& [option, enFormat] :
         {std::pair(json, enFormatJson), std::pair(hex, enFormatHex), std::pair(fields, enFormatText),
          std::pair(prometheus, enFormatPrometheus)}) {
        if (parser.isSet(option)) {
            listFormat.append(QLatin1String("--") + option.names().constFirst());
            m_enFormat = enFormat;
        }
    }
    m_bWatch = parser.isSet(watch);
    m_bHelp = parser.isSet(help);
    m_bVersion = parser.isSet(version);
    m_bUdp = parser.isSet(udp);
    m_strAddress = parser.value(udp);
    m_listPath = parser.positionalArguments();

    if (!bParsed) {
        Fail("%1", "选项错误：%1", parser.errorText());
    }
    if (parser.isSet(lang) && !bChinese && !bEnglish) {
        Fail("--lang takes zh or en, not \"%1\".", "--lang只接受zh或en，不接受“%1”。", strLang);
    }
    if (listFormat.size() > 1) {
        Fail("%1 exclude each other.", "%1不能同时使用。",
             listFormat.join(QString::fromUtf8(ByLanguage(m_enLang, " and ", "与"))));
    }
    if (m_bUdp && !m_listPath.isEmpty()) {
        Fail("--udp takes no files.", "使用--udp时不能给出文件。");
    }
    if (m_enFormat == enFormatPrometheus && (m_bUdp || m_bWatch || !m_listPath.isEmpty())) {
        Fail("--prometheus takes no files, --udp or --watch.", "使用--prometheus时不能给出文件、--udp或--watch。");
    }
    if (parser.isSet(output)) {
        m_strOutput = parser.value(output);
        if (m_enFormat != enFormatPrometheus) {
            Fail("--output goes with --prometheus.", "--output只能与--prometheus同用。");
        }
    }
}

const char* StatusOptions::HelpText() const
{
    return c_pHelp[m_enLang];
}

void StatusOptions::Fail(const char* pEnglish, const char* pChinese, const QString& strDetail) const
{
    const QString strMessage = QString::fromUtf8(ByLanguage(m_enLang, pEnglish, pChinese));
    throw ToolError(enExitUsage, QString(strMessage).replace(QLatin1String("%1"), strDetail),
                    QString::fromUtf8(ByLanguage(m_enLang, "See 'vora-status --help'.", "请看“vora-status --help”。")));
}
