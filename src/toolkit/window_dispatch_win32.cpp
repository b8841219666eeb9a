#include <windows.h>

#include "toolkit/message_decode.h"
#include "toolkit/window.h"
#include "toolkit/window_table.h"

namespace {

template <class Pointer>
Pointer PointerFrom(std::uint64_t wide) {
    return reinterpret_cast<Pointer>(wide);
}

std::uint32_t Unsigned(std::int32_t value) {
    return static_cast<std::uint32_t>(value);
}

}  // namespace

INT_PTR CALLBACK XWindow::DialogProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_INITDIALOG && lParam != 0) {
        reinterpret_cast<XWindow*>(lParam)->Bind(window, true);
    }
    XWindow* const object = FindInWindowTable(window);
    return object != nullptr ? object->Dispatch(window, message, wParam, lParam) : 0;
}

LRESULT CALLBACK XWindow::WindowProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_CREATE) {
        void* const parameter = reinterpret_cast<const CREATESTRUCTW*>(lParam)->lpCreateParams;
        if (parameter != nullptr) static_cast<XWindow*>(parameter)->Bind(window, false);
    }
    XWindow* const object = FindInWindowTable(window);
    return object != nullptr ? object->Dispatch(window, message, wParam, lParam)
                             : DefWindowProcW(window, message, wParam, lParam);
}

void XWindow::Bind(HWND window, bool asDialog) {
    windowHandle = window;
    dialogMode = asDialog;
    AddToWindowTable(this);
}

LRESULT XWindow::Dispatch(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    handledFlag = 0;
    if (windowHandle == nullptr) return 0;
    const LRESULT early = PreDispatch(window, message, wParam, lParam, &handledFlag);
    if (handledFlag != 0) {
        if (!dialogMode) return early;
        SetWindowLongPtrW(window, DWLP_MSGRESULT, early);
        return handledFlag;
    }
    handledFlag = 1;
    const Outcome outcome = RunOperation(DecodeMessage(message, wParam, lParam));
    if (outcome.isFinal) return outcome.result;
    if (dialogMode) {
        SetWindowLongPtrW(window, DWLP_MSGRESULT, outcome.result);
        return handledFlag;
    }
    return handledFlag != 0 ? outcome.result : DefWindowProcW(window, message, wParam, lParam);
}

XWindow::Outcome XWindow::RunOperation(const DecodedMessage& decoded) {
    LRESULT result = 0;
    switch (decoded.operation) {
        case MessageOperation::Activate:
            OnActivate(PointerFrom<HWND>(decoded.wide), decoded.value, decoded.more);
            break;
        case MessageOperation::Close:
            OnClose();
            break;
        case MessageOperation::ContextMenu:
            OnContextMenu(PointerFrom<HWND>(decoded.wide), Unsigned(decoded.x),
                          Unsigned(decoded.y));
            break;
        case MessageOperation::Command:
            RunStandardCommand(decoded.standard);
            OnCommand(decoded.value, PointerFrom<HWND>(decoded.wide), decoded.more);
            break;
        case MessageOperation::Create:
            OnCreate();
            handledFlag = 1;
            break;
        case MessageOperation::Destroy:
            OnDestroy();
            break;
        case MessageOperation::Deactivate:
            OnDeactivate(PointerFrom<HWND>(decoded.wide), decoded.value);
            break;
        case MessageOperation::DrawItem: {
            const auto& item = *PointerFrom<const DRAWITEMSTRUCT*>(decoded.wide);
            OnDrawItem(item.hwndItem, decoded.value, item);
            break;
        }
        case MessageOperation::EraseBackground:
            OnEraseBackground(PointerFrom<HDC>(decoded.wide));
            if (handledFlag != 0) result = 1;
            break;
        case MessageOperation::Hide:
            OnHide(decoded.value);
            break;
        case MessageOperation::KeyDown:
            OnKeyDown(decoded.value, decoded.more);
            break;
        case MessageOperation::KeyUp:
            OnKeyUp(decoded.value, decoded.more);
            break;
        case MessageOperation::Char:
            OnChar(static_cast<wchar_t>(decoded.value));
            break;
        case MessageOperation::MouseDown:
            OnMouseDown(decoded.x, decoded.y, decoded.value, decoded.more);
            break;
        case MessageOperation::MouseUp:
            OnMouseUp(decoded.x, decoded.y, decoded.value, decoded.more);
            break;
        case MessageOperation::MouseMove:
            OnMouseMove(decoded.x, decoded.y, decoded.value);
            break;
        case MessageOperation::MouseWheel:
            OnMouseWheel(decoded.x, decoded.y, decoded.delta, decoded.value);
            break;
        case MessageOperation::Move:
            OnMove(decoded.x, decoded.y);
            break;
        case MessageOperation::Notify:
            result = OnNotify(PointerFrom<NMHDR*>(decoded.wide));
            break;
        case MessageOperation::Paint:
            OnPaint();
            // The platform's default finds nothing left to paint, and validates
            // what an override without BeginPaint left invalid.
            handledFlag = 0;
            break;
        case MessageOperation::Show:
            OnShow(decoded.value);
            break;
        case MessageOperation::Size:
            OnSize(Unsigned(decoded.x), Unsigned(decoded.y), decoded.value);
            break;
        case MessageOperation::SysCommand:
            OnSysCommand(decoded.value);
            handledFlag = 0;
            break;
        case MessageOperation::Timer:
            RunTimer(decoded.wide);
            break;
        case MessageOperation::CtlColorStatic:
            return BrushOutcome(OnCtlColorStatic());
        case MessageOperation::CtlColorDlg:
            return BrushOutcome(OnCtlColorDlg());
        case MessageOperation::None:
            handledFlag = 0;
            break;
    }
    return {false, result};
}

XWindow::Outcome XWindow::BrushOutcome(HBRUSH brush) const {
    // A dialog procedure hands a brush back as its own result.
    if (handledFlag != 0) return {true, reinterpret_cast<LRESULT>(brush)};
    return {false, 0};
}

void XWindow::RunStandardCommand(StandardCommand command) {
    switch (command) {
        case StandardCommand::Ok:
            return OnIdOk();
        case StandardCommand::Cancel:
            return OnIdCancel();
        case StandardCommand::Abort:
            return OnIdAbort();
        case StandardCommand::Close:
            return OnIdClose();
        case StandardCommand::Help:
            return OnIdHelp();
        case StandardCommand::Ignore:
            return OnIdIgnore();
        case StandardCommand::No:
            return OnIdNo();
        case StandardCommand::Retry:
            return OnIdRetry();
        case StandardCommand::Yes:
            return OnIdYes();
        case StandardCommand::None:
            return;
    }
}

void XWindow::RunTimer(std::uint64_t id) {
    const clMutexLock lock(timerMutex);
    const clTimerRecord* const record = timers.Find(id);
    if (record != nullptr) OnTimer(static_cast<std::uint32_t>(record->id), record->userValue);
}
