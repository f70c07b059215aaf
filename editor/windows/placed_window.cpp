#include "editor/windows/placed_window.h"

#include <QSettings>
#include <QWidget>

#include "platform/registry.h"
#include "settings/settings_store.h"

namespace kalvo {

namespace {

QSettings places() {
    return {QSettings::IniFormat, QSettings::UserScope, "kalvo-horizon", "fenetres"};
}

}  // namespace

void restorePlace(QWidget* window, Registry& registry) {
    const std::string former = "Place" + window->objectName().toStdString();
    if (registry.query(RegistryRoot::kCurrentUser, kSettingsKey, former))
        registry.remove(RegistryRoot::kCurrentUser, kSettingsKey, former);
    window->restoreGeometry(places().value(window->objectName()).toByteArray());
}

void keepPlace(const QWidget* window) {
    places().setValue(window->objectName(), window->saveGeometry());
}

}  // namespace kalvo
