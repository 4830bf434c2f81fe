#include "windows/program_facts.h"

namespace orvane {

std::string_view ProgramVersion() { return ORVANE_VERSION; }
std::string_view WebSite() { return ORVANE_WEB_SITE; }

}  // namespace orvane
