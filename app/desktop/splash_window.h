// The splash window frmSplach.
#pragma once

#include <QLabel>
#include <QVBoxLayout>
#include <QWidget>

namespace kalvo {

class SplashWindow : public QWidget {
public:
    SplashWindow()
        : QWidget(nullptr, Qt::SplashScreen | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint) {
        setObjectName("frmSplach");
        setAttribute(Qt::WA_ShowWithoutActivating);
        auto* const layout = new QVBoxLayout(this);
        auto* const title = new QLabel("<h2>KALVO Horizon</h2>");
        auto* const loading = new QLabel("Chargement en cours ...");
        loading->setObjectName("Lblchargement");
        layout->addWidget(title);
        layout->addWidget(loading);
    }
};

}  // namespace kalvo
