#include "app/portable_link.h"

#include <memory>
#include <utility>

#include "app/bindings/system_bindings.h"
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
                    std::function<bool()> breakRequested)
        : OwnLine{std::move(ownLine)}, KermitMultidll(*line, files, std::move(breakRequested)) {}
};

}  // namespace

MultidllFactory portableLink(FileSystem& files, ProfileFiles& profiles,
                             std::string applicationFolder) {
    return [&files, &profiles, folder = std::move(applicationFolder)](
               std::function<bool()> breakRequested) -> std::unique_ptr<Multidll> {
        if (auto installed = findMultidll()) return installed;
        return std::make_unique<KermitOnOwnLine>(createTransferLine(profiles, folder), files,
                                                 std::move(breakRequested));
    };
}

}  // namespace kalvo
