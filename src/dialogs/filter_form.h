// The filter: which audio types are left out of listing and conversion.
#pragma once

#include <windows.h>

#include <cstdint>

#include "decoders/audio_type.h"
#include "toolkit/value_list.h"
#include "toolkit/window.h"

// A modal dialog, run by its constructor; OK writes the boxes back into the types.
// Nothing is stored. The user interface thread.
class frmFilter : public XWindow {
public:
    // `types` stays the caller's.
    frmFilter(HWND parent, clAudioTypes& types);

    void OnClose() override;
    void OnCreate() override;
    void OnDestroy() override;
    void OnShow(std::uint32_t reason) override;
    LRESULT PreDispatch(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                        std::uint32_t* handled) override;
    void OnIdOk() override;
    void OnIdCancel() override;

private:
    void SetAll(bool included);

    clAudioTypes& types;
    XValueList list;
};
