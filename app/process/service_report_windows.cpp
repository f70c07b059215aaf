#include "app/process/service_report.h"

namespace kalvo {

void reportToServiceManager(std::string_view) noexcept {}

}  // namespace kalvo
