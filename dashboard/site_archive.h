// A site in one file: its settings, its keys and its scenarios.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "core/run_time_state.h"
#include "platform/archive.h"
#include "platform/platform.h"

namespace kalvo {

// The archive of a site: PortSerie.ini, Options.ini, Applications.ini, the key files, Scen.mdb
// as it is at one moment, and the compiled scenarios; those there are. RuntimeErrors of the file
// system and of the data engine.
[[nodiscard]] std::string packSite(const Platform& platform, std::string_view applicationFolder,
                                   ArchiveFormat& format);

// What an archive brings: the files of a site under their own names, and the names of all others,
// which are passed over. No name leads out of the site.
struct SiteImport {
    std::vector<ArchiveFile> files;
    std::vector<std::string> ignored;
};

// RuntimeErrors 321 of the format, and for an archive without any file of a site.
[[nodiscard]] SiteImport readSite(ArchiveFormat& format, std::string_view archive);

// What an import would change, a line for each file and scenario that differs, in French; empty
// when nothing would. RuntimeErrors of the data engine for a database that is none.
[[nodiscard]] std::string changesOf(const Platform& platform, std::string_view applicationFolder,
                                    const SiteImport& site);

// Puts the files in their places, the keys into force, and the scenarios as a return to a copy
// does; the port is left to the caller. What was there before is kept in
// "Copies\Site-avant-import.zip". What the user should know in the end, in French. Errors as above.
[[nodiscard]] std::string bringIn(const Platform& platform, RunTimeState& state,
                                  ArchiveFormat& format, const SiteImport& site);

}  // namespace kalvo
