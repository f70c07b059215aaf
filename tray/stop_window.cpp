#include "tray/stop_window.h"

#include <QHBoxLayout>
#include <QLabel>

namespace kalvo {

namespace {

constexpr int kBetweenLooks = 700;  // milliseconds

}  // namespace

StopWindow::StopWindow(const std::function<bool()>& typing, const std::function<void()>& stop)
    : CornerWindow("frmArretSaisie", "KALVO Horizon : saisie en cours") {
    auto* const row = new QHBoxLayout;
    inside()->addLayout(row);
    row->addWidget(new QLabel("Saisie en cours."));
    addButton(row, "CmdArreterSaisie", "Arrêter la saisie", stop);
    timer_.setInterval(kBetweenLooks);
    connect(&timer_, &QTimer::timeout, this, [this, typing] {
        if (!typing()) {
            timer_.stop();
            hide();
        } else if (!isVisible()) {
            showInCorner();
        }
    });
}

}  // namespace kalvo
