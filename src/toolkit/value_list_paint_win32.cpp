#include <algorithm>
#include <vector>

#include "toolkit/font.h"
#include "toolkit/value_list.h"

namespace {

constexpr COLORREF readOnlyColour = 0xC0C0C0;

// Paints the texts of a read-only row grey for as long as the object lives.
class GreyTexts {
public:
    explicit GreyTexts(const clValueRow& row) : texts(row.layout.texts) {
        if (!row.readOnly) return;
        for (std::int64_t i = 0; i < texts.Count(); ++i) {
            colours.push_back(texts.At(i)->colour);
            texts.At(i)->colour = readOnlyColour;
        }
    }
    GreyTexts(const GreyTexts&) = delete;
    GreyTexts& operator=(const GreyTexts&) = delete;
    ~GreyTexts() {
        for (std::size_t i = 0; i < colours.size(); ++i)
            texts.At(static_cast<std::int64_t>(i))->colour = colours[i];
    }

private:
    const clOwnedList<clTextString>& texts;
    std::vector<COLORREF> colours;
};

std::int32_t HintWidth(const clValueRow& row, std::int32_t size) {
    const clScreenContext screen;
    clFont font;
    font.Create(nullptr, nullptr, size);
    return font.TextWidth(screen.Get(), ValueButtonHint(row.buttonCaption));
}

}  // namespace

XValueList::Answer XValueList::DrawItem(const DRAWITEMSTRUCT& item) {
    const auto row = static_cast<std::int32_t>(item.itemID);
    if (Row(row) != nullptr)
        PaintRow(row, item);
    else
        FillRect(item.hDC, &item.rcItem, static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH)));
    return {1, 1};
}

void XValueList::PaintRow(std::int32_t at, const DRAWITEMSTRUCT& item) {
    clValueRow& row = *Row(at);
    const std::int32_t width = item.rcItem.right - item.rcItem.left;
    const std::int32_t height = item.rcItem.bottom - item.rcItem.top;
    if (work.Width() < width || work.Height() < height) {
        work.CreateEmpty(item.hDC, std::max(work.Width(), width), std::max(work.Height(), height));
    }
    const GreyTexts grey(row);
    const bool isEdited = valueControl.Row() == at;
    const bool isSelected = (item.itemState & ODS_SELECTED) != 0;
    const ValueLook look = {row.readOnly, isSelected, (item.itemState & ODS_FOCUS) != 0,
                            isEdited && valueControl.IsNameEdited(),
                            isEdited && !valueControl.IsNameEdited()};
    if (row.kind != ValueKind::FixedText) row.layout.texts.At(0)->text.Assign(row.name);
    clTextString& value = *row.layout.texts.At(1);
    if (!IsSwitch(row.kind)) value.text.Assign(ValueDisplayText(row.value));
    const bool hasHint = !row.buttonCaption.IsEmpty() && !isSelected;
    value.maximumWidth = ValueTextWidth(width, row.valueX, row.valueWidth,
                                        hasHint ? HintWidth(row, defaultValueSize) : 0);
    row.layout.minimumWidth = width;
    row.layout.minimumHeight = height;
    row.layout.paddingX = 0;
    row.layout.paddingY = 0;
    row.layout.dirty = true;
    row.layout.stateFlags = ValueState(look, row.kind, IsOn(at));
    row.layout.Paint(work.Context(), 0, 0);
    work.Blit(item.hDC, item.rcItem.left, item.rcItem.top, width, height);
}
