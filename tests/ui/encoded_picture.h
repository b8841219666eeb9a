// Pictures in a file's form.
#pragma once

#include <windows.h>

#include <cstdint>
#include <functional>
#include <vector>

// A BMP file of 24 bits for each pixel, whose pixels are what `colourAt` says.
std::vector<std::uint8_t> EncodedBmp(int width, int height,
                                     const std::function<COLORREF(int x, int y)>& colourAt);
