#include "app/desktop/run_desktop.h"

#include <QApplication>
#include <QIcon>
#include <QLibraryInfo>
#include <QLocale>
#include <QObject>
#include <QTranslator>
#include <array>
#include <string>
#include <string_view>

#include "app/desktop/desktop_program.h"
#include "app/desktop/display_loss.h"
#include "app/process/end_signals.h"
#include "app/running_site.h"
#include "app/sites.h"
#include "platform/qt/pictogram.h"
#include "platform/qt/qt_dialogs.h"
#include "settings/settings_store.h"
#include "text/ansi_text.h"

namespace kalvo {

namespace {

QIcon programIcon() {
    QIcon icon;
    for (const int size : {16, 22, 24, 32, 48, 64, 128, 256})
        icon.addFile(QString(":/icons/kalvo-horizon-%1.png").arg(size));
    return icon;
}

// The toolkit's own texts in French, whatever the session speaks: so are ours.
void speakFrench(QTranslator& translator) {
    QLocale::setDefault(QLocale(QLocale::French, QLocale::France));
    if (translator.load("qtbase_fr", QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        QApplication::installTranslator(&translator);
}

// A signal closes the box, too.
int refuseSecond(EndSignals& signals) {
    QObject box;
    signals.start(
        [&box] {
            QMetaObject::invokeMethod(
                &box, [] { QApplication::exit(); }, Qt::QueuedConnection);
        },
        [] {});
    QtDialogs().message("Application déjà active !"_ansi, kApplicationTitle,
                        MessageIcon::kCritical);
    signals.stop();
    return kExitFailure;
}

}  // namespace

int runDesktop(const CommandLine& line, SystemBindings& bindings) {
    if (!watchDisplay()) return kExitFailure;
    if (const std::string_view systems = windowSystems();
        !systems.empty() && !qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", QByteArray(systems.data(), static_cast<int>(systems.size())));
    // Before any thread starts, so that the signals go where they are waited for.
    EndSignals signals;
    int argumentCount = 1;
    std::string programName = "kalvo-horizon";
    std::array<char*, 2> arguments = {programName.data(), nullptr};
    const QApplication application(argumentCount, arguments.data());
    QApplication::setStyle(new PictogramStyle);
    QApplication::setDesktopFileName("kalvo-horizon");
    QApplication::setQuitOnLastWindowClosed(false);
    QApplication::setWindowIcon(programIcon());
    QTranslator translator;
    speakFrench(translator);

    const RunningSite site(bindings.applicationFolder, "Programme de bureau", localNow());
    if (!site.alone()) return displayCameBack() ? kExitFailure : refuseSecond(signals);
    rememberSite(*bindings.profiles, knownSitesFile(), bindings.applicationFolder);
    DesktopProgram(bindings, line.applicationFolder.has_value()).run(signals);
    return kExitSuccess;
}

}  // namespace kalvo
