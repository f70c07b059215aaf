// The window frmTransfert: file transfer with a portable terminal.
#pragma once

#include <QWidget>
#include <functional>
#include <memory>
#include <string>

#include "platform/multidll.h"
#include "transfer/portable_transfer.h"

class QGridLayout;
class QLabel;
class QLineEdit;
class QProgressBar;
class QPushButton;

namespace kalvo {

// Destroys itself once it is closed. Closing or Escape during a transfer breaks that
// off; closing then takes place when it is over.
class PortableTransferWindow : public QWidget, private PortableTransferView {
public:
    // `deliver` runs what a button does as an event of the program. Modal for `owner`,
    // if any. Throws what the factory throws.
    PortableTransferWindow(QWidget* owner, const Platform& platform, const MultidllFactory& factory,
                           std::string applicationFolder,
                           std::function<void(const std::function<void()>&)> deliver);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    QPushButton* button(const QString& name, const QString& caption, const QString& tip,
                        const std::function<void()>& run);
    QLineEdit* parameterRow(QGridLayout* grid, const QString& name, const QString& caption,
                            LineParameter parameter, const QString& tip);
    QWidget* parameterBox();
    QWidget* fileBox();
    QWidget* progressBox();
    // Runs an operation with the controls disabled and only breaking off left.
    void run(const std::function<void()>& operation);
    void setRunning(bool running);
    void breakOff();

    void showVersion(std::int32_t version) override;
    void showParameter(LineParameter parameter, std::int32_t value) override;
    void showBar(std::int32_t maximum) override;
    void setBar(std::int32_t value) override;
    void hideBar() override;
    void showStoredName(std::string_view name) override;
    void showCounts(std::int32_t bytes, std::int32_t packets) override;

    std::function<void(const std::function<void()>&)> deliver_;
    std::unique_ptr<Multidll> library_;
    PortableTransfer transfer_;
    bool running_ = false;
    bool closing_ = false;
    QWidget* controls_ = nullptr;
    QLabel* lblVersion = nullptr;
    QLineEdit* txtEscDelay = nullptr;
    QLineEdit* txtNakDelay = nullptr;
    QLineEdit* txtTimeOut = nullptr;
    QLabel* lblUploaded = nullptr;
    QLabel* lblBytes = nullptr;
    QLabel* lblPackets = nullptr;
    QProgressBar* PrgB = nullptr;
    QPushButton* cmdBreak = nullptr;
    QPushButton* cmdClose = nullptr;
};

}  // namespace kalvo
