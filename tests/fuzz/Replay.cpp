// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "TestFiles.h"

#include <QDirIterator>

#include <cstdint>
#include <cstdio>
#include <vector>

// Stands in for the fuzzing engine where the compiler has none: hands over each file once.

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* pData, std::size_t iSize);

/// The arguments are folders. Fails when one of them holds nothing.
int main(int argc, char** argv)
{
    bool bComplete = argc > 1;
    for (int i = 1; i < argc; ++i) {
        int iCount = 0;
        QDirIterator file(QString::fromLocal8Bit(argv[i]), QDir::Files, QDirIterator::Subdirectories);
        for (; file.hasNext(); ++iCount) {
            const QByteArray content = ReadFile(file.next());
            std::printf("%s\n", qPrintable(file.filePath())); // the last one is that of a crash
            std::fflush(stdout);
            // Ends with its last byte, so that a memory checker sees a read beyond it.
            const std::vector<std::uint8_t> bytes(content.begin(), content.end());
            LLVMFuzzerTestOneInput(bytes.data(), bytes.size());
        }
        std::printf("%d inputs of %s\n", iCount, argv[i]);
        bComplete = bComplete && iCount > 0;
    }
    return bComplete ? 0 : 1;
}
