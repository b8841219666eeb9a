#include "tests/toolkit/value_editor_form.h"

#include "tests/support/text.h"
#include "tests/ui/pump.h"
#include "toolkit/dpi.h"

std::vector<std::string> EditorForm::told;

void EditorForm::NoteChange(XValueList& list) {
    told.push_back("change " + Utf8(list.Row(list.CurrentRow())->value));
}

void EditorForm::NoteButton(XValueList& list, std::int32_t row) {
    told.push_back("button " + std::to_string(row) + " " + Utf8(list.Row(row)->value));
}

EditorForm::EditorForm() {
    told.clear();
    for (const wchar_t* choice : {L"Apple", L"apricot", L"Banana", L"Apple"})
        choices.Add(choice);
    clValueRowParams params;
    params.changeCallback = &NoteChange;
    params.choices = &choices;
    Add(ValueKind::Text, L"zero", L"text", params);
    Add(ValueKind::Edit, L"one", L"first", params);
    Add(ValueKind::Combo, L"two", L"", params);
    Add(ValueKind::Choice, L"three", L"Banana", params);
    params.lines = 3;
    Add(ValueKind::Edit, L"four", L"a\r\nb", params);
    params.lines = 0;
    params.buttonCaption = L"Pick";
    params.buttonCallback = &NoteButton;
    Add(ValueKind::Edit, L"five", L"fifth", params);
    params.readOnly = true;
    Add(ValueKind::Edit, L"six", L"sixth", params);
    params.readOnly = false;
    params.buttonCaption = L"";
    for (int i = 7; i < 10; ++i)
        Add(ValueKind::Edit, L"more", L"text", params);
}

void EditorForm::Select(std::int32_t row) {
    list.SelectRowAt(row);
    PumpMessages();
    told.clear();
    Taken();
}

Range EditorForm::Selected() const {
    DWORD start = 0;
    DWORD end = 0;
    SendMessageW(Field(), EM_GETSEL, reinterpret_cast<WPARAM>(&start),
                 reinterpret_cast<LPARAM>(&end));
    return {static_cast<int>(start), static_cast<int>(end)};
}

void EditorForm::SetCaret(int start, int end) const {
    SendMessageW(Field(), EM_SETSEL, static_cast<WPARAM>(start), end);
}

RECT EditorForm::InRowPlace(std::int32_t row, int left, int right, int height) const {
    const RECT rect = RowRect(row);
    const LONG top = rect.top + (rect.bottom - rect.top - ScaleForDpi(21)) / 2;
    return {left, top, right, top + height};
}
