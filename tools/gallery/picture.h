// Pictures in a file's form.
#pragma once

#include <windows.h>

#include <cstdint>
#include <vector>

#include "foundation/string.h"
#include "toolkit/mem_bitmap.h"

// Copies a rectangle of the screen as it stands.
void CatchScreen(const RECT& place, XMemBitmap& picture);

// The pixels, 0xRRGGBB each, the bottom row first.
std::vector<std::uint32_t> PixelsOf(const XMemBitmap& picture);
// As a BMP file of 32 bits for each pixel.
std::vector<std::uint8_t> EncodeBmp(const XMemBitmap& picture);
// Writes over an earlier file. False if it can't be written.
[[nodiscard]] bool WriteToFile(const clString& path, const std::vector<std::uint8_t>& bytes);
