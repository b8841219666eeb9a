#include "foundation/mutex.h"
#include "mainwindow/file_list.h"
#include "mainwindow/row_looks.h"
#include "mainwindow/row_pictures.h"
#include "resources/ids.h"
#include "toolkit/dpi.h"
#include "toolkit/font.h"
#include "toolkit/icon_resource.h"
#include "toolkit/mem_bitmap.h"

namespace {

// One row while it is painted.
struct RowPaint {
    XListView& view;
    clRowPictures& pictures;
    HDC context;  // of the row's own bitmap
    std::int32_t row;
    std::int32_t height;
    bool ticked;
    COLORREF background;
    clFont& font;
};

void DrawTickBox(const RowPaint& paint, std::int32_t x) {
    const int id = paint.ticked ? IDI_TICKED : IDI_STATE_NONE;
    paint.pictures.Paint(paint.context, x + row_place::tickBox,
                         {clRowPictures::Kind::TickBox, id, paint.background}, {16, 16},
                         [id](HDC context) {
                             const clIconHandle icon = LoadIconResource(id);
                             DrawIconEx(context, 0, 0, icon.Get(), 16, 16, 0, nullptr, DI_NORMAL);
                         });
}

// The picture of the file's type; false if the row can't tell it.
bool DrawPicture(const RowPaint& paint, std::int32_t x) {
    LVITEMW item = {};
    item.mask = LVIF_IMAGE;
    item.iItem = paint.row;
    const HWND list = paint.view.ListWindow();
    if (SendMessageW(list, LVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&item)) == FALSE) return false;
    const auto images =
        reinterpret_cast<HIMAGELIST>(SendMessageW(list, LVM_GETIMAGELIST, LVSIL_SMALL, 0));
    int width = 0;
    int height = 0;
    if (ImageList_GetIconSize(images, &width, &height) == FALSE) return true;
    paint.pictures.Paint(
        paint.context, x + row_place::picture,
        {clRowPictures::Kind::FileType, item.iImage, paint.background}, {width, height},
        [&](HDC context) { ImageList_Draw(images, item.iImage, context, 0, 0, ILD_NORMAL); });
    return true;
}

// The masked picture: what the mask leaves white stays as it was.
void DrawStrip(const XMemBitmap& target, const XMemBitmap& mask, const XMemBitmap& picture,
               const StripPiece& piece, std::int32_t height) {
    // A width of 0 draws nothing; -1 would stand for the whole bitmap.
    if (piece.width <= 0) return;
    mask.Blit(target.Context(), piece.targetX, 0, piece.width, height, piece.sourceX, piece.sourceY,
              SRCAND);
    picture.Blit(target.Context(), piece.targetX, 0, piece.width, height, piece.sourceX,
                 piece.sourceY, SRCPAINT);
}

void DrawNotRated(const XMemBitmap& target) {
    const clString text(L"Not Rated");
    clFont font;
    font.Create(target.Context(), nullptr, ScaleForDpi(12), row_colour::notRated);
    font.DrawString(row_place::notRatedCentre - font.TextWidth(nullptr, text) / 2,
                    row_place::textTop, text);
}

void DrawRating(const RowPaint& paint, std::int32_t x, std::int32_t columnWidth,
                const clString& text) {
    XMemBitmap cell;
    cell.CreateEmpty(paint.context, columnWidth - 1, paint.height);
    cell.FillColour(paint.background);
    XMemBitmap mask;
    mask.LoadResource(IDB_STARS_MASK);
    XMemBitmap picture;
    picture.LoadResource(IDB_STARS);
    const RatingLooks looks =
        LooksOfRating(text.ToInt(), paint.ticked, mask.Width(), mask.Height());
    if (looks.rated) {
        DrawStrip(cell, mask, picture, looks.lit, looks.bandHeight);
        DrawStrip(cell, mask, picture, looks.rest, looks.bandHeight);
    } else {
        DrawNotRated(cell);
    }
    cell.Blit(paint.context, x, 1);
}

CellAlignment AlignmentOf(const XListView& view, std::int32_t column) {
    LVCOLUMNW parts = {};
    parts.mask = LVCF_FMT;
    SendMessageW(view.ListWindow(), LVM_GETCOLUMNW, static_cast<WPARAM>(column),
                 reinterpret_cast<LPARAM>(&parts));
    switch (parts.fmt & LVCFMT_JUSTIFYMASK) {
        case LVCFMT_RIGHT:
            return CellAlignment::Right;
        case LVCFMT_CENTER:
            return CellAlignment::Centre;
        default:
            return CellAlignment::Left;
    }
}

// Draws one cell at `x` and returns where the next one begins.
std::int32_t DrawCell(const RowPaint& paint, std::int32_t column, std::int32_t x) {
    bool hasPicture = false;
    if (column == 0) {
        DrawTickBox(paint, x);
        hasPicture = DrawPicture(paint, x);
    }
    const std::int32_t inset = CellInset(column == 0, hasPicture);
    const std::int32_t width = paint.view.ColumnWidth(column);
    clString text = paint.view.CellText(paint.row, column);
    if (paint.view.ColumnTitle(column).Equals(L"Rating")) {
        DrawRating(paint, x, width, text);
        text.Assign(L"");
    }
    paint.font.FitWithEllipsis(width - inset, text);
    if (!text.IsEmpty()) {
        const std::int32_t textX = CellTextX(AlignmentOf(paint.view, column), width,
                                             paint.font.TextWidth(nullptr, text), inset);
        paint.font.DrawString(x + textX, row_place::textTop, text);
    }
    return x + width;
}

}  // namespace

// In one copy at the end, so that nothing flickers. The columns come in the order
// of their creation: after a header was dragged the cells stay until the next
// start, which creates them in the saved order.
void clFileList::DrawRow(const DRAWITEMSTRUCT& item) {
    const RECT& area = item.rcItem;
    const std::int32_t width = area.right - area.left;
    const std::int32_t height = area.bottom - area.top;
    if (view.ListWindow() == nullptr || width <= 0 || height <= 0) return;
    // A row asks the list some fifty times, each of which would enter the kernel.
    const clMutexLock lock(SubclassMutex);

    XMemBitmap& bitmap = rowBitmap;
    if (bitmap.Width() != width || bitmap.Height() != height)
        bitmap.CreateEmpty(item.hDC, width, height);
    const COLORREF background =
        (item.itemState & ODS_SELECTED) != 0 ? row_colour::selected : row_colour::background;
    bitmap.FillColour(background);
    const auto row = static_cast<std::int32_t>(item.itemID);
    const bool ticked = IsTicked(row);
    clFont font;
    font.Create(bitmap.Context(), nullptr, ScaleForDpi(defaultTextSize),
                ticked ? row_colour::tickedText : row_colour::untickedText);
    const RowPaint paint{view,   rowPictures, bitmap.Context(), row,
                         height, ticked,      background,       font};
    std::int32_t x = 0;
    for (std::int32_t column = 0; column < view.ColumnCount(); ++column)
        x = DrawCell(paint, column, x);
    font.Release();
    bitmap.Blit(item.hDC, area.left, area.top);
}
