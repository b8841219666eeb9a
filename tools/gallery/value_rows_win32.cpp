#include "tools/gallery/value_rows.h"

#include "resources/ids.h"
#include "toolkit/icon_resource.h"

namespace {

void AddTexts(XValueList& list) {
    list.AddRow(ValueRow(ValueKind::Heading, L"0 to 4: texts", L""));
    list.AddRow(ValueRow(ValueKind::Text, L"0 Text", L"a value"));
    clValueRowParams coloured = ValueRow(ValueKind::Text, L"0 coloured", L"bold name");
    coloured.bold = true;
    coloured.nameColour = 0x803000;
    coloured.valueColour = 0x008000;
    list.AddRow(coloured);
    const clIconHandle icon = LoadIconResource(IDI_PROGRAM);
    clValueRowParams pictured = ValueRow(ValueKind::Text, L"0 with an icon", L"first line\rsecond");
    pictured.icon = icon.Get();
    pictured.iconX = 4;
    pictured.nameX = 24;
    list.AddRow(pictured);
    list.AddRow(ValueRow(ValueKind::FixedText, L"1 Fixed text", L"a value"));
    list.AddRow(ValueRow(ValueKind::Link, L"2 Link", L"C:\\windows"));
    list.AddRow(ValueRow(ValueKind::Heading, L"3 Heading", L""));
    list.AddRow(ValueRow(ValueKind::Band, L"4 Band", L"a value"));
}

void AddEditors(XValueList& list) {
    list.AddRow(ValueRow(ValueKind::Heading, L"5 to 7: editors", L""));
    list.AddRow(ValueRow(ValueKind::Edit, L"5 Edit", L"a text"));
    clValueRowParams withButton =
        ValueRow(ValueKind::Edit, L"5 with a button", L"a long text of it");
    withButton.buttonCaption.Assign(L"Browse");
    list.AddRow(withButton);
    clValueRowParams lines = ValueRow(ValueKind::Edit, L"5 of three lines", L"one\r\ntwo\r\nthree");
    lines.lines = 3;
    list.AddRow(lines);
    list.AddRow(ValueRow(ValueKind::Combo, L"6 Combo", L"Lossless"));
    list.AddRow(ValueRow(ValueKind::Choice, L"7 Choice", L"High"));
}

void AddSwitches(XValueList& list) {
    list.AddRow(ValueRow(ValueKind::Heading, L"8 and 9: switches", L""));
    for (const auto& [kind, name, value] :
         {std::tuple{ValueKind::Toggle, L"8 Toggle, on", L"1"},
          std::tuple{ValueKind::Toggle, L"8 Toggle, off", L""},
          std::tuple{ValueKind::Radio, L"9 Radio, chosen", L"-1"},
          std::tuple{ValueKind::Radio, L"9 Radio, not chosen", L"1"}}) {
        clValueRowParams row = ValueRow(kind, name, value);
        row.nameX = 24;
        list.AddRow(row);
    }
}

void AddReadOnly(XValueList& list) {
    clValueRowParams text = ValueRow(ValueKind::Edit, L"5 read-only", L"no editor");
    text.readOnly = true;
    text.buttonCaption.Assign(L"Browse");
    list.AddRow(text);
    clValueRowParams toggle = ValueRow(ValueKind::Toggle, L"8 read-only, on", L"1");
    toggle.nameX = 24;
    toggle.readOnly = true;
    list.AddRow(toggle);
}

}  // namespace

const clStringList& ValueChoices() {
    static const clStringList* const choices = [] {
        auto* list = new clStringList;
        for (const wchar_t* choice : {L"Low", L"High", L"Lossless"})
            list->Add(clString(choice));
        return list;
    }();
    return *choices;
}

clValueRowParams ValueRow(ValueKind kind, const wchar_t* name, const wchar_t* value) {
    clValueRowParams row;
    row.kind = kind;
    row.name.Assign(name);
    row.value.Assign(value);
    row.choices = &ValueChoices();
    return row;
}

void SetValueIcons(XValueList& list) {
    list.SetToggleIcons(LoadIconResource(IDI_TICKED).Get(), LoadIconResource(IDI_STATE_NONE).Get());
    list.SetToggleIcon(ToggleIcon::RadioOn, LoadIconResource(IDI_STATE_RECURSIVE).Get());
    list.SetToggleIcon(ToggleIcon::RadioOff, LoadIconResource(IDI_STATE_NONE).Get());
}

void AddEveryKind(XValueList& list) {
    AddTexts(list);
    AddEditors(list);
    AddSwitches(list);
    AddReadOnly(list);
}

void CatchValueRow(XValueList& list, HWND form, std::int32_t row, UINT state, XMemBitmap& still) {
    DRAWITEMSTRUCT item = {};
    item.CtlType = ODT_LISTBOX;
    item.CtlID = static_cast<UINT>(GetDlgCtrlID(list.ListBox()));
    item.itemID = static_cast<UINT>(row);
    item.itemAction = ODA_DRAWENTIRE;
    item.itemState = state;
    item.hwndItem = list.ListBox();
    item.hDC = still.Context();
    item.rcItem = {0, 0, still.Width(), still.Height()};
    std::uint32_t handled = 0;
    list.Route(form, WM_DRAWITEM, item.CtlID, reinterpret_cast<LPARAM>(&item), &handled);
}
