// The part of reading a Jet database that runs in a process of its own.
#pragma once

#include <filesystem>

#include "platform/jet/jet_stream.h"

namespace kalvo {

// Reads the file with libmdb and writes its tables, or the failure, to the stream.
// May crash or never return when the file is damaged.
void streamJetTables(const std::filesystem::path& file, JetStreamWriter& stream);

}  // namespace kalvo
