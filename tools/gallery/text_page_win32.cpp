#include <functional>

#include "resources/ids.h"
#include "toolkit/draw.h"
#include "toolkit/gdi_handle.h"
#include "toolkit/icon_resource.h"
#include "tools/gallery/page.h"
#include "tools/gallery/picture.h"

namespace {

constexpr std::int32_t cellWidth = 180;
constexpr std::int32_t cellHeight = 64;
constexpr std::int32_t cellStep = 196;
constexpr std::int32_t rowStep = 104;
constexpr std::int32_t cellsInRow = 5;
constexpr clArea inner = {10, 8, anchor::beforeEnd | 10, anchor::beforeEnd | 8};

clTextString Text(std::int32_t x, std::int32_t y, const wchar_t* text) {
    clTextString record;
    record.at = {x, y};
    record.text.Assign(text);
    return record;
}

class TextPage : public GalleryPage {
public:
    const wchar_t* Name() const override { return L"Display list"; }

protected:
    void Fill() override;

private:
    using Fills = std::function<void(clText&)>;

    // In the next cell, on white paper of the cell's size.
    void AddCell(const wchar_t* label, const Fills& fills, std::uint32_t stateFlags = 0);
    void AddShapes();
    void AddGradients();
    void AddPictures();
    void AddTexts();
    void AddRules();

    std::int32_t cells = 0;
};

void TextPage::AddCell(const wchar_t* label, const Fills& fills, std::uint32_t stateFlags) {
    clText list;
    list.AddFill({{0, 0, anchor::end, anchor::end}, 0xFFFFFF});
    fills(list);
    list.minimumWidth = cellWidth;
    list.minimumHeight = cellHeight;
    list.stateFlags = stateFlags;
    XMemBitmap still;
    still.CreateEmpty(nullptr, cellWidth, cellHeight);
    list.Paint(still.Context(), 0, 0);
    const std::int32_t x = 16 + cells % cellsInRow * cellStep;
    const std::int32_t y = 12 + cells / cellsInRow * rowStep;
    AddStill(x, y, still);
    AddLabel(x, y + cellHeight + 4, label);
    ++cells;
}

void TextPage::Fill() {
    AddShapes();
    AddGradients();
    AddPictures();
    AddTexts();
    AddRules();
}

void TextPage::AddShapes() {
    AddCell(L"fill", [](clText& list) { list.AddFill({inner, 0x50B0F0}); });
    AddCell(L"box", [](clText& list) { list.AddBox({inner, 0xFFFAEE, 0xC08030}); });
    AddCell(L"box, corners of 16", [](clText& list) {
        clTextBox box{inner, 0xFFFAEE, 0xC08030};
        box.cornerRadius = 16;
        list.AddBox(box);
    });
    AddCell(L"frame; focus frame in it", [](clText& list) {
        list.AddFrame({inner, 0x3030C0});
        list.AddFrame({{16, 14, anchor::beforeEnd | 16, anchor::beforeEnd | 14}, 0, true});
    });
    AddCell(L"lines", [](clText& list) {
        list.AddLine({0x3030C0, {10, 8}, {anchor::beforeEnd | 10, anchor::beforeEnd | 8}});
        list.AddLine({0xC03030, {10, anchor::half}, {anchor::beforeEnd | 10, anchor::half}});
    });
}

void TextPage::AddGradients() {
    const auto add = [this](const wchar_t* label, const clCornerColours& colours) {
        AddCell(label, [&colours](clText& list) {
            clTextGradient gradient;
            gradient.area = inner;
            gradient.colours = colours;
            list.AddGradient(gradient);
        });
    };
    add(L"gradient across", {0xF0C040, 0x4040F0, 0xF0C040, 0x4040F0});
    add(L"gradient down", {0xF0C040, 0xF0C040, 0x4040F0, 0x4040F0});
    add(L"gradient of four corners", {0x0000FF, 0x00FF00, 0xFF0000, 0x00FFFF});
    add(L"gradient of a selected row", {0xF7F4EC, 0xF7F4EC, 0xF4EDDB, 0xF4EDDB});
    add(L"gradient of one colour", {0x80C080, 0x80C080, 0x80C080, 0x80C080});
}

void TextPage::AddPictures() {
    AddCell(L"bitmap, centred", [](clText& list) {
        XMemBitmap stars;
        stars.LoadResource(IDB_STARS);
        clTextPicture picture;
        picture.at = {anchor::centred, anchor::centred};
        list.AddPicture(picture, stars);
    });
    AddCell(L"a mask, and a bitmap over it", [](clText& list) {
        list.AddFill({inner, 0xC0E0A0});
        clTextPicture picture;
        picture.at = {anchor::centred, anchor::centred};
        for (const auto& [id, operation] :
             {std::pair{IDB_STARS_MASK, SRCAND}, std::pair{IDB_STARS, SRCPAINT}}) {
            XMemBitmap bitmap;
            bitmap.LoadResource(static_cast<std::uint32_t>(id));
            picture.rasterOp = operation;
            list.AddPicture(picture, bitmap);
        }
    });
    AddCell(L"icons: own, external", [](clText& list) {
        static const clIconHandle own = LoadIconResource(IDI_PROGRAM, 32);
        static HICON const external = LoadIconW(nullptr, IDI_INFORMATION);
        list.AddIcon({own.Get(), {30, anchor::centred}});
        clTextIcon record;
        record.at = {100, anchor::centred};
        record.external = &external;
        list.AddIcon(record);
    });
    AddCell(L"in encoded form; a copy of the list", [](clText& list) {
        XMemBitmap bitmap;
        bitmap.CreateEmpty(nullptr, 60, 30);
        DrawGradient(bitmap.Context(), {0, 0, 59, 29}, {0x0000FF, 0x00FF00, 0xFF0000, 0x00FFFF});
        const std::vector<std::uint8_t> bytes = EncodeBmp(bitmap);
        clText original;
        original.AddFill({{0, 0, anchor::end, anchor::end}, 0xFFFFFF});
        clTextPicture picture;
        picture.at = {anchor::centred, anchor::centred};
        original.AddPicture(picture, bytes.data(), static_cast<std::int64_t>(bytes.size()));
        list.CopyFrom(original);
    });
    AddCell(
        L"condition 5 with flags 5",
        [](clText& list) {
            list.AddFill({inner, 0x80D080, 5});
            list.AddText(Text(anchor::centred, anchor::centred, L"shows"));
        },
        5);
    AddCell(
        L"condition 5 with flags 4",
        [](clText& list) {
            list.AddFill({inner, 0x80D080, 5});
            list.AddText(Text(anchor::centred, anchor::centred, L"the fill does not show"));
        },
        4);
}

void TextPage::AddTexts() {
    AddCell(L"default; bold; italic; underline", [](clText& list) {
        list.AddText(Text(8, 6, L"Tahoma, 13 pixels"));
        clTextString text = Text(8, 22, L"bold");
        text.bold = true;
        list.AddText(text);
        text = Text(60, 22, L"italic");
        text.italic = true;
        list.AddText(text);
        text = Text(110, 22, L"underline");
        text.underline = true;
        list.AddText(text);
        text = Text(8, 40, L"another face");
        text.face.Assign(L"Courier New");
        list.AddText(text);
    });
    AddCell(L"sizes 9, 13, 20; colours", [](clText& list) {
        std::int32_t x = 8;
        for (const auto& [size, colour] :
             {std::pair{9, 0x3030C0u}, std::pair{13, 0x30A030u}, std::pair{20, 0xC03030u}}) {
            clTextString text = Text(x, anchor::centred, L"Text");
            text.size = size;
            text.colour = colour;
            list.AddText(text);
            x += size * 3;
        }
    });
    AddCell(L"at most 100 pixels: dots", [](clText& list) {
        clTextString text = Text(8, anchor::centred, L"A text that is longer than that");
        text.maximumWidth = 100;
        list.AddText(text);
        list.AddLine({0xC0C0C0, {108, 0}, {108, anchor::end}});
    });
    AddCell(L"lines end with CR", [](clText& list) {
        list.AddText(Text(8, anchor::centred, L"first line\rsecond line\r\n\nthird line"));
    });
    AddCell(L"tabs", [](clText& list) {
        list.AddText(Text(8, anchor::centred, L"a\tb\tc\rlong one\tb\tc"));
    });
}

void TextPage::AddRules() {
    AddCell(L"layers: blue on 2, red on 1", [](clText& list) {
        list.AddFill({{60, 20, 140, 50}, 0xE09030}, 2);
        list.AddFill({{30, 10, 100, 40}, 0x3030E0}, 1);
    });
    AddCell(L"one layer: fill, box, gradient, frame", [](clText& list) {
        list.AddFrame({{20, 10, 120, 54}, 0x3030E0}, 1);
        list.AddGradient({{60, 20, 160, 48}, {0xF0F0F0, 0x808080, 0xF0F0F0, 0x808080}}, 1);
        list.AddBox({{40, 16, 90, 44}, 0xFFFAEE, 0xC08030}, 1);
        list.AddFill({{30, 12, 60, 30}, 0x80D080}, 1);
    });
    AddCell(L"text over everything of its layer", [](clText& list) {
        list.AddText(Text(anchor::centred, anchor::centred, L"above the fill"), 1);
        list.AddFill({inner, 0xB0F0F0}, 1);
    });
}

}  // namespace

std::unique_ptr<GalleryPage> MakeTextPage() {
    return std::make_unique<TextPage>();
}
