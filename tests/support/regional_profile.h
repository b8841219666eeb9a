// A region of a test's own.
#pragma once

#include "foundation/regional.h"

// As most people of the United States have it.
inline constexpr clRegionalSettings englishRegion = {true, true, 1,    false, L"-",
                                                     L"",  L",", L".", L":"};

// From its construction to its end numbers are written as in that region.
class RegionalProfile {
public:
    explicit RegionalProfile(const clRegionalSettings& region) : saved(regionalSettings) {
        regionalSettings = region;
    }
    RegionalProfile(const RegionalProfile&) = delete;
    RegionalProfile& operator=(const RegionalProfile&) = delete;
    ~RegionalProfile() { regionalSettings = saved; }

private:
    clRegionalSettings saved;
};
