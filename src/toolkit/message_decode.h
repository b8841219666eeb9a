// A window message told apart: which operation of XWindow it is, with what arguments.
#pragma once

#include <cstdint>

// The messages that have an operation.
enum class MessageOperation : std::uint8_t {
    None,
    Activate,
    Close,
    ContextMenu,
    Command,
    Create,
    Destroy,
    Deactivate,
    DrawItem,
    EraseBackground,
    Hide,
    KeyDown,
    KeyUp,
    Char,
    MouseDown,
    MouseUp,
    MouseMove,
    MouseWheel,
    Move,
    Notify,
    Paint,
    Show,
    Size,
    SysCommand,
    Timer,
    CtlColorStatic,
    CtlColorDlg,
};

// The commands that have an operation of their own, by their ids.
enum class StandardCommand : std::uint8_t {
    None = 0,
    Ok = 1,
    Cancel = 2,
    Abort = 3,
    Retry = 4,
    Ignore = 5,
    Yes = 6,
    No = 7,
    Close = 8,
    Help = 9,
};

// Fields that an operation has no use for are 0.
struct DecodedMessage {
    MessageOperation operation = MessageOperation::None;
    // Command: runs before OnCommand.
    StandardCommand standard = StandardCommand::None;
    // A window, control or device context, a structure's address, a timer's id.
    std::uint64_t wide = 0;
    // A point, or a width and a height.
    std::int32_t x = 0;
    std::int32_t y = 0;
    // MouseWheel only.
    std::int32_t delta = 0;
    // Activate, Deactivate: minimised. Command, DrawItem: id. Hide, Show: reason.
    // KeyDown, KeyUp: key. Char: character. MouseDown, MouseUp: message number.
    // MouseMove, MouseWheel: keys held. Size: type. SysCommand: command.
    std::uint32_t value = 0;
    // Activate: how. Command: notify code. KeyDown, KeyUp: flags. MouseDown,
    // MouseUp: keys held.
    std::uint32_t more = 0;
};

// `message`, `wParam` and `lParam` as the platform gives them; nothing that they
// point to is read.
DecodedMessage DecodeMessage(std::uint32_t message, std::uint64_t wParam, std::int64_t lParam);
