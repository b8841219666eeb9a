#include "tools/gallery/page.h"

namespace {

struct CodedPlace {
    const wchar_t* label;
    std::int32_t coded;
};
// Of the left edge of something 24 by 12 pixels large.
constexpr CodedPlace places[] = {
    {L"5", 5},
    {L"half", anchor::half},
    {L"half + 5", anchor::half | 5},
    {L"half, negative 5", anchor::half | anchor::negative | 5},
    {L"end, negative 30", anchor::beforeEnd | 30},
    {L"centred", anchor::centred},
    {L"end less size", anchor::end | anchor::lessSize},
    {L"end less size, negative 5", anchor::end | anchor::lessSize | anchor::negative | 5},
};

constexpr clExtent parents[] = {{120, 40}, {160, 60}, {200, 80}};

class CoordinatePage : public GalleryPage {
public:
    const wchar_t* Name() const override { return L"Coordinates"; }

protected:
    void Fill() override;

private:
    void AddParent(std::int32_t x, std::int32_t y, const clExtent& parent, const CodedPlace& place);
};

void CoordinatePage::Fill() {
    AddHeading(16, 10, L"The same coded coordinate, on both axes, in parents of three sizes");
    std::int32_t y = 36;
    for (const CodedPlace& place : places) {
        AddLabel(16, y + 30, place.label);
        std::int32_t x = 220;
        for (const clExtent& parent : parents) {
            AddParent(x, y, parent, place);
            x += parent.width + 40;
        }
        y += 86;
    }
}

// A string's own size is its own, so the item is a picture of a known one.
void CoordinatePage::AddParent(std::int32_t x, std::int32_t y, const clExtent& parent,
                               const CodedPlace& place) {
    XMemBitmap item;
    item.CreateEmpty(nullptr, 24, 12);
    item.FillColour(0x3080E0);
    clText list;
    list.AddFill({{0, 0, anchor::end, anchor::end}, 0xFFFFFF});
    list.AddLine({0xD0D0D0, {anchor::half, 0}, {anchor::half, anchor::end}});
    list.AddLine({0xD0D0D0, {0, anchor::half}, {anchor::end, anchor::half}});
    clTextPicture picture;
    picture.at = {place.coded, place.coded};
    list.AddPicture(picture, item);
    list.AddFrame({{0, 0, anchor::end, anchor::end}, 0xA0A0A0});
    list.minimumWidth = parent.width;
    list.minimumHeight = parent.height;
    XMemBitmap still;
    still.CreateEmpty(nullptr, parent.width, parent.height);
    list.Paint(still.Context(), 0, 0);
    AddStill(x, y, still);
}

}  // namespace

std::unique_ptr<GalleryPage> MakeCoordinatePage() {
    return std::make_unique<CoordinatePage>();
}
