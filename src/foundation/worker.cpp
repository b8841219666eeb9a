#include "foundation/worker.h"

bool GraceIsOver(std::uint32_t begin, std::uint32_t now, std::uint32_t graceMs) {
    return graceMs != 0 && now - begin > graceMs;
}
