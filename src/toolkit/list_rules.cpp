#include "toolkit/list_rules.h"

namespace {

constexpr std::uint32_t checkZoneLast = 20;

// The platform's bits and key codes; list_view_route_win32.cpp and
// list_view_editor_win32.cpp compare them with its headers.
constexpr std::uint32_t stateImageBits = 0xF000;
constexpr std::uint32_t imageNotTicked = 0x1000;
constexpr std::uint32_t imageTicked = 0x2000;
constexpr std::uint32_t checkBits = imageNotTicked | imageTicked;
constexpr std::uint32_t selectedBit = 0x0002;
constexpr std::uint32_t stateChange = 0x0008;
constexpr std::uint32_t widthChange = 0x0001;

constexpr std::uint32_t keyReturn = 0x0D;
constexpr std::uint32_t keyEscape = 0x1B;
constexpr std::uint32_t keyLeft = 0x25;
constexpr std::uint32_t keyUp = 0x26;
constexpr std::uint32_t keyRight = 0x27;
constexpr std::uint32_t keyDown = 0x28;

}  // namespace

bool IsInCheckZone(std::int32_t pointerX, std::int32_t firstColumnLeft) {
    return static_cast<std::uint32_t>(pointerX) - static_cast<std::uint32_t>(firstColumnLeft) <=
           checkZoneLast;
}

std::uint32_t ToggledCheckState(std::uint32_t state) {
    return (state & stateImageBits) == imageNotTicked ? imageTicked : imageNotTicked;
}

ListStateChange LookAtStateChange(std::uint32_t changedMask, std::uint32_t oldState,
                                  std::uint32_t newState) {
    if (changedMask != stateChange) return {};
    const std::uint32_t flipped = oldState ^ newState;
    return {(flipped & selectedBit) != 0, (newState & selectedBit) != 0,
            (flipped & checkBits) != 0};
}

std::optional<std::int32_t> WidthToKeep(const HeaderChange& change, const clPtrArray& minimums) {
    if (!change.hasItem || change.mask != widthChange) return std::nullopt;
    if (change.column < 0 || change.column >= minimums.Count()) return std::nullopt;
    const auto minimum = static_cast<std::int32_t>(minimums.Get(change.column));
    if (change.width >= minimum) return std::nullopt;
    return minimum;
}

clString TextForBuffer(const clString& text, std::int32_t bufferSize) {
    if (bufferSize == 0 || text.Length() <= bufferSize - 1) return text;
    return text.Left(bufferSize - 1);
}

EditorKey EditorKeyMeaning(std::uint32_t virtualKey, const EditSelection& selection,
                           std::int32_t textLength) {
    if (virtualKey == keyReturn) return EditorKey::Commit;
    if (virtualKey == keyEscape) return EditorKey::Cancel;
    if (selection.start == selection.end && selection.end != textLength) return EditorKey::Pass;
    switch (virtualKey) {
        case keyLeft:
            return EditorKey::Left;
        case keyUp:
            return EditorKey::Up;
        case keyRight:
            return EditorKey::Right;
        case keyDown:
            return EditorKey::Down;
        default:
            return EditorKey::Pass;
    }
}
