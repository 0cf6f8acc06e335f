// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "ReplyLayout.h"
#include "Scenario.h"
#include "ToolError.h"
#include "Verdict.h"

#include <algorithm>
#include <cstdint>

/// Any bytes, as a scenario of the simulator. It is refused with a message, or makes printers whose replies end nobody.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* pData, std::size_t iSize)
{
    const QByteArray json(reinterpret_cast<const char*>(pData), static_cast<int>(iSize));
    try {
        const stScenario scenario = ReadScenario(json, u"input"_s);
        EndUnless(!scenario.listPrinter.isEmpty() && scenario.listPrinter.size() <= c_iMaxPrinters);
        // Printers that a count made have the same reply, but for their serial number.
        for (int i = 0; i < std::min<int>(static_cast<int>(scenario.listPrinter.size()), 3); ++i) {
            EndUnless(ReplyLayout(EncodeStatusReply(scenario.listPrinter.at(i).reply)).IsAccepted());
        }
        EndUnless(std::all_of(scenario.listStep.begin(), scenario.listStep.end(), [&scenario](const stStep& step) {
            return step.iAtMSec >= 0 && !step.listPrinter.isEmpty() &&
                   step.listPrinter.constLast() < scenario.listPrinter.size();
        }));
    } catch (const ToolError& error) {
        EndUnless(!error.Message().isEmpty());
    }
    return 0;
}
