// Text of the reference: the standard library's, so that nothing of the product
// is needed to compute what the product is held against.
#pragma once

#include <string>
#include <string_view>

#include "foundation/string.h"

namespace oracle {

using Text = std::u16string;
using TextView = std::u16string_view;

// Equal but for the case of A to Z.
bool SameText(TextView left, TextView right);
// True if `text` begins with `start`, but for the case of A to Z.
bool BeginsWith(TextView text, TextView start);
// Goes before, by unsigned units after folding A to Z.
bool GoesBefore(TextView left, TextView right);
// Everything up to the last backslash, that included; without one, all of it.
TextView FolderPart(TextView path);
// From the last dot behind the last backslash; "." without such a dot.
TextView ExtensionPart(TextView path);

clString ToProduct(const Text& text);
void FromProduct(const clString& text, Text& out);
Text FromProduct(const clString& text);

// For messages.
std::string Utf8(const Text& text);

}  // namespace oracle
