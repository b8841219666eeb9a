#include "foundation/regional_platform.h"

namespace regional_platform {

clString ReadValue(const wchar_t* /*valueName*/) {
    return {};
}

}  // namespace regional_platform
