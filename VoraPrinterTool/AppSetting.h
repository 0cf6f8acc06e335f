// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QWidget>

#include <memory>

namespace Ui {
class AppSetting;
}

/// The settings window: whether the program starts with the desktop login, which is so exactly when the desktop entry
/// stands in the user's autostart folder. Hidden, never destroyed, when it is closed. Belongs to the GUI thread.
class AppSetting : public QWidget
{
    Q_OBJECT

public:
    explicit AppSetting(QWidget* parent = nullptr);
    ~AppSetting() override;

    /// Whether the autostart file exists, whatever it holds.
    bool ReadAutoStartOption();

    /// On: copies the desktop entry from beside the executable unless one is there; off: removes it. A failure leaves
    /// the file as it was, and ReadAutoStartOption tells.
    void SaveAutoStartOption(bool bAutoStart);

    void InitOption(); ///< from the file to the check box
    void SaveOption(); ///< from the check box to the file

public slots: // of the form's two buttons
    void on_pushButtonOK_clicked();
    void on_pushButtonCancel_clicked();

protected:
    void showEvent(QShowEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    std::unique_ptr<Ui::AppSetting> ui;
};
