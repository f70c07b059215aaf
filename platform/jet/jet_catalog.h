// The tables of a Jet file by name: the rows of MSysObjects, of whose columns count
//
//   Name   of the object
//   Type   1 for a table of this file
//   Id     of a table: the page of its definition in the lower three bytes
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/jet/jet_pages.h"

namespace kalvo {

class JetCatalog {
public:
    explicit JetCatalog(JetPages& pages);

    // The page of a table's definition; the case of the name (code page 1252) does not
    // matter.
    [[nodiscard]] std::optional<std::size_t> findTable(std::string_view name) const;

private:
    struct Entry {
        std::string name;
        std::size_t page;
    };
    std::vector<Entry> tables_;
};

}  // namespace kalvo
