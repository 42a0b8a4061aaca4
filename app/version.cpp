#include "app/version.hpp"

namespace orvante {

std::string version() {
    return ORVANTE_VERSION;
}

std::string versionTag() {
    return ORVANTE_VERSION_TAG;
}

} // namespace orvante
