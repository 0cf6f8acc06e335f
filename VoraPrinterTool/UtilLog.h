// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

/// Switches the log on or off as a whole. On: a new file name with the present time and index 0; the first line creates
/// the file. Called from the main thread before any worker starts.
void SetLogEnable(bool bEnable);

/// Appends one line with the time, the caller's position and the printf-style message (at most 1023 bytes, a longer one
/// is cut); a QString value is passed as its local 8-bit bytes, and a text made elsewhere as an argument of "%s".
/// Control characters of the message are escaped, so that a call writes one line. Does nothing while the log is off; a
/// line that cannot be written is dropped.
void WriteStringLog(const char* pFile, int iLine, const char* pFunction, QString strFormat, ...);
