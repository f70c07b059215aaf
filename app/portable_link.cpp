#include "app/portable_link.h"

#include <memory>
#include <string>
#include <utility>

#include "app/bindings/system_bindings.h"
#include "settings/application_paths.h"
#include "settings/settings_store.h"
#include "text/ansi_text.h"
#include "text/runtime_error.h"
#include "transfer/kermit/kermit_multidll.h"

namespace kalvo {

namespace {

struct OwnLine {
    std::unique_ptr<TransferLine> line;
};

// The line comes before and goes after what speaks on it.
class KermitOnOwnLine : private OwnLine, public KermitMultidll {
public:
    KermitOnOwnLine(std::unique_ptr<TransferLine> ownLine, FileSystem& files,
                    std::function<bool()> breakRequested, std::string why)
        : OwnLine{std::move(ownLine)},
          KermitMultidll(*line, files, std::move(breakRequested)),
          why_(std::move(why)) {}

    [[nodiscard]] std::string remark() const override {
        return why_ +
               std::string(
                   " Le portable doit faire tourner un serveur Kermit, que le programme appelle."_ansi);
    }

private:
    std::string why_;
};

// Named by whoever set the site up, as it stands in the file.
std::string namedLibrary(ProfileFiles& profiles, const std::string& applicationFolder) {
    return toUtf8(ReadIniValue(profiles, portSerieIni(applicationFolder), "Portable", "Multidll"));
}

}  // namespace

MultidllFactory portableLink(FileSystem& files, ProfileFiles& profiles,
                             std::string applicationFolder) {
    return [&files, &profiles, folder = std::move(applicationFolder)](
               std::function<bool()> breakRequested) -> std::unique_ptr<Multidll> {
        std::string why("Aucune bibliothèque Multidll n'est installée."_ansi);
        try {
            if (auto installed = findMultidll(namedLibrary(profiles, folder))) return installed;
        } catch (const RuntimeError& error) {
            why = error.description();
        }
        return std::make_unique<KermitOnOwnLine>(createTransferLine(profiles, folder), files,
                                                 std::move(breakRequested), std::move(why));
    };
}

}  // namespace kalvo
