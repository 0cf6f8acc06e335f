// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "UtilThreadBase.h"

#include <unistd.h>

namespace {
constexpr int c_iSliceMSec = 500;
} // namespace

UtilThreadBase::UtilThreadBase(QObject* parent) : QObject(parent) {}

bool UtilThreadBase::WaitForSleep(int iMSec)
{
    for (int i = 0; i < iMSec / c_iSliceMSec; ++i) {
        if (m_bThreadQuit) {
            return true;
        }
        usleep(c_iSliceMSec * 1000);
    }
    const int iRemainder = iMSec % c_iSliceMSec;
    if (iRemainder > 0) {
        usleep(static_cast<useconds_t>(iRemainder) * 1000);
    }
    return m_bThreadQuit;
}

#include "moc_UtilThreadBase.cpp"
