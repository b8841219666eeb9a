#include "toolkit/message_decode.h"

#include <gtest/gtest.h>

namespace {

using Op = MessageOperation;
using Std = StandardCommand;

constexpr std::uint64_t handle = 0x0000000123450678;
constexpr auto handleAsLong = static_cast<std::int64_t>(handle);

struct Row {
    const char* what;
    std::uint32_t message;
    std::uint64_t wParam;
    std::int64_t lParam;
    DecodedMessage expected;
};

void Check(const Row& row) {
    const DecodedMessage got = DecodeMessage(row.message, row.wParam, row.lParam);
    const DecodedMessage& want = row.expected;
    EXPECT_EQ(static_cast<int>(got.operation), static_cast<int>(want.operation)) << row.what;
    EXPECT_EQ(static_cast<int>(got.standard), static_cast<int>(want.standard)) << row.what;
    EXPECT_EQ(got.wide, want.wide) << row.what;
    EXPECT_EQ(got.x, want.x) << row.what;
    EXPECT_EQ(got.y, want.y) << row.what;
    EXPECT_EQ(got.delta, want.delta) << row.what;
    EXPECT_EQ(got.value, want.value) << row.what;
    EXPECT_EQ(got.more, want.more) << row.what;
}

DecodedMessage Bare(Op operation) {
    return {.operation = operation};
}

DecodedMessage Wide(Op operation, std::uint64_t wide) {
    return {.operation = operation, .wide = wide};
}

DecodedMessage Values(Op operation, std::uint32_t value, std::uint32_t more = 0) {
    return {.operation = operation, .value = value, .more = more};
}

DecodedMessage Point(Op operation, std::int32_t x, std::int32_t y, std::uint32_t value = 0,
                     std::uint32_t more = 0) {
    return {.operation = operation, .x = x, .y = y, .value = value, .more = more};
}

// y in the upper half, x in the lower.
constexpr std::int64_t Packed(std::uint32_t y, std::uint32_t x) {
    return static_cast<std::int64_t>(y) << 16 | static_cast<std::int64_t>(x);
}

TEST(DecodeMessage, TellsTheOperationOfEachMessage) {
    const Row rows[] = {
        {"create", 0x0001, 0, handleAsLong, Bare(Op::Create)},
        {"init dialog", 0x0110, handle, handleAsLong, Bare(Op::Create)},
        {"destroy", 0x0002, 0, 0, Bare(Op::Destroy)},
        {"close", 0x0010, 0, 0, Bare(Op::Close)},
        {"paint", 0x000F, 0, 0, Bare(Op::Paint)},
        {"erase", 0x0014, handle, 0, Wide(Op::EraseBackground, handle)},
        {"notify", 0x004E, 1001, handleAsLong, Wide(Op::Notify, handle)},
        {"timer", 0x0113, handle, 0, Wide(Op::Timer, handle)},
        {"draw item",
         0x002B,
         7,
         handleAsLong,
         {.operation = Op::DrawItem, .wide = handle, .value = 7}},
        {"draw item of a menu", 0x002B, 0, handleAsLong, Wide(Op::DrawItem, handle)},
        {"static's colours", 0x0138, handle, handleAsLong, Bare(Op::CtlColorStatic)},
        {"dialog's colours", 0x0136, handle, handleAsLong, Bare(Op::CtlColorDlg)},
        {"null", 0x0000, 1, 2, {}},
        {"edit's colours", 0x0133, handle, handleAsLong, {}},
        {"left double click", 0x0203, 1, 0x00050004, {}},
        {"right double click", 0x0206, 1, 0x00050004, {}},
        {"sideways wheel", 0x020E, 0x00780000, 0x00050004, {}},
        {"system key", 0x0104, 0x12, 1, {}},
        {"measure item", 0x002C, 0, handleAsLong, {}},
        {"application's own", 0x8000, 1, 2, {}},
        {"beyond 16 bits", 0x00010001, 1, 2, {}},
    };
    for (const Row& row : rows)
        Check(row);
}

TEST(DecodeMessage, ActivationGoesByTheLowerHalf) {
    const DecodedMessage active = {.operation = Op::Activate, .wide = handle, .more = 1};
    const DecodedMessage clicked = {
        .operation = Op::Activate, .wide = handle, .value = 1, .more = 2};
    const DecodedMessage inactive = {.operation = Op::Deactivate, .wide = handle};
    const DecodedMessage minimised = {.operation = Op::Deactivate, .wide = handle, .value = 0x20};
    const Row rows[] = {
        {"active", 0x0006, 1, handleAsLong, active},
        {"by a click, minimised", 0x0006, 0x00010002, handleAsLong, clicked},
        {"inactive", 0x0006, 0, handleAsLong, inactive},
        {"inactive, minimised", 0x0006, 0x00200000, handleAsLong, minimised},
        {"inactive, without another window", 0x0006, 0, 0, Bare(Op::Deactivate)},
    };
    for (const Row& row : rows)
        Check(row);
}

TEST(DecodeMessage, ShowingGoesByAllOfTheFirstParameter) {
    const Row rows[] = {
        {"hidden", 0x0018, 0, 0, Bare(Op::Hide)},
        {"hidden with a reason", 0x0018, 0, 3, Values(Op::Hide, 3)},
        {"shown", 0x0018, 1, 0, Bare(Op::Show)},
        {"shown by another value", 0x0018, 0x10000, 1, Values(Op::Show, 1)},
        {"the reason has 32 bits", 0x0018, 1, 0x1FFFFFFFF, Values(Op::Show, 0xFFFFFFFF)},
    };
    for (const Row& row : rows)
        Check(row);
}

TEST(DecodeMessage, MousePointsAreSigned) {
    const Row rows[] = {
        {"left down", 0x0201, 0x0001, Packed(20, 10), Point(Op::MouseDown, 10, 20, 0x0201, 1)},
        {"right down", 0x0204, 0x0002, Packed(0, 0), Point(Op::MouseDown, 0, 0, 0x0204, 2)},
        {"middle down", 0x0207, 0x0010, Packed(1, 2), Point(Op::MouseDown, 2, 1, 0x0207, 16)},
        {"left up", 0x0202, 0, Packed(20, 10), Point(Op::MouseUp, 10, 20, 0x0202)},
        {"right up", 0x0205, 8, Packed(3, 4), Point(Op::MouseUp, 4, 3, 0x0205, 8)},
        {"middle up", 0x0208, 4, Packed(3, 4), Point(Op::MouseUp, 4, 3, 0x0208, 4)},
        {"left of the window", 0x0202, 0, Packed(5, 0xFFFF), Point(Op::MouseUp, -1, 5, 0x0202)},
        {"above it", 0x0201, 1, Packed(0x8000, 0x7FFF),
         Point(Op::MouseDown, 32767, -32768, 0x0201, 1)},
        {"a sign over all 64 bits", 0x0200, 1, -1, Point(Op::MouseMove, -1, -1, 1)},
        {"move", 0x0200, 0x100000005, Packed(7, 8), Point(Op::MouseMove, 8, 7, 5)},
    };
    for (const Row& row : rows)
        Check(row);
}

TEST(DecodeMessage, TheWheelHasASignedTurn) {
    const auto wheel = [](std::int32_t x, std::int32_t y, std::int32_t delta, std::uint32_t keys) {
        return DecodedMessage{
            .operation = Op::MouseWheel, .x = x, .y = y, .delta = delta, .value = keys};
    };
    const Row rows[] = {
        {"away", 0x020A, 0x00780000, Packed(200, 100), wheel(100, 200, 120, 0)},
        {"towards", 0x020A, 0xFF880000, Packed(200, 100), wheel(100, 200, -120, 0)},
        {"a sign over all 64 bits", 0x020A, 0xFFFFFFFFFF880008, Packed(0xFFF0, 0xFFFE),
         wheel(-2, -16, -120, 8)},
        {"three notches with keys", 0x020A, 0x0168000C, 0, wheel(0, 0, 360, 12)},
    };
    for (const Row& row : rows)
        Check(row);
}

TEST(DecodeMessage, PlacesAreSignedAndSizesAreNot) {
    const Row rows[] = {
        {"move", 0x0003, 0, Packed(30, 40), Point(Op::Move, 40, 30)},
        {"move to the left", 0x0003, 0, Packed(0xFFE0, 0xFFFF), Point(Op::Move, -1, -32)},
        {"size", 0x0005, 0, Packed(480, 640), Point(Op::Size, 640, 480)},
        {"maximised", 0x0005, 2, Packed(0xFFFF, 0x8000), Point(Op::Size, 32768, 65535, 2)},
    };
    for (const Row& row : rows)
        Check(row);
}

TEST(DecodeMessage, ContextMenuPointsAreUnsigned) {
    const auto menu = [](std::int32_t x, std::int32_t y) {
        return DecodedMessage{.operation = Op::ContextMenu, .wide = handle, .x = x, .y = y};
    };
    const Row rows[] = {
        {"by the mouse", 0x007B, handle, Packed(20, 10), menu(10, 20)},
        {"by the keyboard", 0x007B, handle, -1, menu(65535, 65535)},
        {"left of the primary display", 0x007B, handle, Packed(20, 0xFFF0), menu(65520, 20)},
    };
    for (const Row& row : rows)
        Check(row);
}

TEST(DecodeMessage, KeysAndCharacters) {
    const Row rows[] = {
        {"key down", 0x0100, 0x20, 0x00390001, Values(Op::KeyDown, 0x20, 0x00390001)},
        {"key up", 0x0101, 0x0D, 0xC01C0001, Values(Op::KeyUp, 0x0D, 0xC01C0001)},
        {"32 bits of each", 0x0100, 0x1FFFFFFFE, -2, Values(Op::KeyDown, 0xFFFFFFFE, 0xFFFFFFFE)},
        {"character", 0x0102, 0x20AC, 1, Values(Op::Char, 0x20AC)},
        {"16 bits of it", 0x0102, 0x12345678, 1, Values(Op::Char, 0x5678)},
    };
    for (const Row& row : rows)
        Check(row);
}

TEST(DecodeMessage, SystemCommandsLoseTheirLowerBits) {
    const Row rows[] = {
        {"maximise by the title", 0x0112, 0xF032, 0, Values(Op::SysCommand, 0xF030)},
        {"close", 0x0112, 0xF060, 0, Values(Op::SysCommand, 0xF060)},
        {"only 16 bits count", 0x0112, 0x1F06F, 0, Values(Op::SysCommand, 0xF060)},
    };
    for (const Row& row : rows)
        Check(row);
}

TEST(DecodeMessage, StandardCommandsNeedNotifyCode0) {
    const auto command = [](std::uint32_t id, std::uint32_t code, Std standard) {
        return DecodedMessage{.operation = Op::Command,
                              .standard = standard,
                              .wide = handle,
                              .value = id,
                              .more = code};
    };
    struct Command {
        std::uint32_t id;
        std::uint32_t code;
        Std standard;
    };
    const Command rows[] = {
        {0, 0, Std::None},      {1, 0, Std::Ok},     {2, 0, Std::Cancel},    {3, 0, Std::Abort},
        {4, 0, Std::Retry},     {5, 0, Std::Ignore}, {6, 0, Std::Yes},       {7, 0, Std::No},
        {8, 0, Std::Close},     {9, 0, Std::Help},   {10, 0, Std::None},     {9, 1, Std::None},
        {1, 0xFFFF, Std::None}, {2, 1, Std::None},   {0xFFFF, 0, Std::None}, {40001, 0, Std::None},
        {1004, 3, Std::None},
    };
    for (const Command& row : rows) {
        const std::uint64_t wParam = std::uint64_t{row.code} << 16 | row.id;
        Check({"command", 0x0111, wParam, handleAsLong, command(row.id, row.code, row.standard)});
        // Whatever stands above the two halves.
        Check({"command", 0x0111, wParam | 0xABCD00000000, handleAsLong,
               command(row.id, row.code, row.standard)});
    }
}

}  // namespace
