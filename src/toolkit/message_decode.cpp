#include "toolkit/message_decode.h"

namespace {

// The numbers of the platform's messages.
enum Message : std::uint32_t {
    messageCreate = 0x0001,
    messageDestroy = 0x0002,
    messageMove = 0x0003,
    messageSize = 0x0005,
    messageActivate = 0x0006,
    messagePaint = 0x000F,
    messageClose = 0x0010,
    messageEraseBackground = 0x0014,
    messageShowWindow = 0x0018,
    messageDrawItem = 0x002B,
    messageNotify = 0x004E,
    messageContextMenu = 0x007B,
    messageKeyDown = 0x0100,
    messageKeyUp = 0x0101,
    messageChar = 0x0102,
    messageInitDialog = 0x0110,
    messageCommand = 0x0111,
    messageSysCommand = 0x0112,
    messageTimer = 0x0113,
    messageCtlColorDlg = 0x0136,
    messageCtlColorStatic = 0x0138,
    messageMouseMove = 0x0200,
    messageLeftDown = 0x0201,
    messageLeftUp = 0x0202,
    messageRightDown = 0x0204,
    messageRightUp = 0x0205,
    messageMiddleDown = 0x0207,
    messageMiddleUp = 0x0208,
    messageMouseWheel = 0x020A,
};

constexpr std::uint16_t LowWord(std::uint64_t value) {
    return static_cast<std::uint16_t>(value);
}

constexpr std::uint16_t HighWord(std::uint64_t value) {
    return static_cast<std::uint16_t>(value >> 16);
}

// The halves as they stand.
void TakeUnsignedPoint(DecodedMessage& decoded, std::uint64_t packed) {
    decoded.x = LowWord(packed);
    decoded.y = HighWord(packed);
}

// Left of the primary display, and above it, points are negative.
void TakeSignedPoint(DecodedMessage& decoded, std::uint64_t packed) {
    decoded.x = static_cast<std::int16_t>(LowWord(packed));
    decoded.y = static_cast<std::int16_t>(HighWord(packed));
}

void DecodeCommand(DecodedMessage& decoded, std::uint64_t first) {
    decoded.value = LowWord(first);
    decoded.more = HighWord(first);
    constexpr auto last = static_cast<std::uint32_t>(StandardCommand::Help);
    if (decoded.more == 0 && decoded.value <= last) {
        decoded.standard = static_cast<StandardCommand>(decoded.value);
    }
}

MessageOperation OperationOf(std::uint32_t message, std::uint64_t first) {
    switch (message) {
        case messageCreate:
        case messageInitDialog:
            return MessageOperation::Create;
        case messageDestroy:
            return MessageOperation::Destroy;
        case messageMove:
            return MessageOperation::Move;
        case messageSize:
            return MessageOperation::Size;
        case messageActivate:
            return LowWord(first) != 0 ? MessageOperation::Activate : MessageOperation::Deactivate;
        case messagePaint:
            return MessageOperation::Paint;
        case messageClose:
            return MessageOperation::Close;
        case messageEraseBackground:
            return MessageOperation::EraseBackground;
        case messageShowWindow:
            return first != 0 ? MessageOperation::Show : MessageOperation::Hide;
        case messageDrawItem:
            return MessageOperation::DrawItem;
        case messageNotify:
            return MessageOperation::Notify;
        case messageContextMenu:
            return MessageOperation::ContextMenu;
        case messageKeyDown:
            return MessageOperation::KeyDown;
        case messageKeyUp:
            return MessageOperation::KeyUp;
        case messageChar:
            return MessageOperation::Char;
        case messageCommand:
            return MessageOperation::Command;
        case messageSysCommand:
            return MessageOperation::SysCommand;
        case messageTimer:
            return MessageOperation::Timer;
        case messageCtlColorDlg:
            return MessageOperation::CtlColorDlg;
        case messageCtlColorStatic:
            return MessageOperation::CtlColorStatic;
        case messageMouseMove:
            return MessageOperation::MouseMove;
        case messageLeftDown:
        case messageRightDown:
        case messageMiddleDown:
            return MessageOperation::MouseDown;
        case messageLeftUp:
        case messageRightUp:
        case messageMiddleUp:
            return MessageOperation::MouseUp;
        case messageMouseWheel:
            return MessageOperation::MouseWheel;
        default:
            return MessageOperation::None;
    }
}

}  // namespace

DecodedMessage DecodeMessage(std::uint32_t message, std::uint64_t wParam, std::int64_t lParam) {
    const auto second = static_cast<std::uint64_t>(lParam);
    DecodedMessage decoded;
    decoded.operation = OperationOf(message, wParam);
    switch (decoded.operation) {
        case MessageOperation::Activate:
        case MessageOperation::Deactivate:
            decoded.wide = second;
            decoded.value = HighWord(wParam);
            decoded.more = LowWord(wParam);
            break;
        case MessageOperation::ContextMenu:
            decoded.wide = wParam;
            TakeUnsignedPoint(decoded, second);
            break;
        case MessageOperation::Command:
            decoded.wide = second;
            DecodeCommand(decoded, wParam);
            break;
        case MessageOperation::DrawItem:
            decoded.wide = second;
            decoded.value = static_cast<std::uint32_t>(wParam);
            break;
        case MessageOperation::EraseBackground:
        case MessageOperation::Timer:
            decoded.wide = wParam;
            break;
        case MessageOperation::Notify:
            decoded.wide = second;
            break;
        case MessageOperation::Hide:
        case MessageOperation::Show:
            decoded.value = static_cast<std::uint32_t>(second);
            break;
        case MessageOperation::KeyDown:
        case MessageOperation::KeyUp:
            decoded.value = static_cast<std::uint32_t>(wParam);
            decoded.more = static_cast<std::uint32_t>(second);
            break;
        case MessageOperation::Char:
            decoded.value = LowWord(wParam);
            break;
        case MessageOperation::MouseDown:
        case MessageOperation::MouseUp:
            TakeSignedPoint(decoded, second);
            decoded.value = message;
            decoded.more = static_cast<std::uint32_t>(wParam);
            break;
        case MessageOperation::MouseMove:
            TakeSignedPoint(decoded, second);
            decoded.value = static_cast<std::uint32_t>(wParam);
            break;
        case MessageOperation::MouseWheel:
            TakeSignedPoint(decoded, second);
            decoded.delta = static_cast<std::int16_t>(HighWord(wParam));
            decoded.value = LowWord(wParam);
            break;
        case MessageOperation::Move:
            TakeSignedPoint(decoded, second);
            break;
        case MessageOperation::Size:
            TakeUnsignedPoint(decoded, second);
            decoded.value = static_cast<std::uint32_t>(wParam);
            break;
        case MessageOperation::SysCommand:
            // The low four bits are the platform's own.
            decoded.value = static_cast<std::uint32_t>(wParam & 0xFFF0);
            break;
        default:
            break;
    }
    return decoded;
}
