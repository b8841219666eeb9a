#include <windows.h>

#include <algorithm>
#include <cstring>
#include <limits>
#include <memory>

#include "toolkit/text.h"

namespace {

void CopyBytes(clByteBuffer& to, const void* bytes, std::int64_t size) {
    to.Free();
    if (bytes == nullptr || size <= 0 || !to.Resize(size, false)) return;
    std::memcpy(to.data, bytes, static_cast<std::size_t>(size));
}

// Of several sources another would go before the one that is set.
void DropSources(clPictureSource& source) {
    source.image.Release();
    source.encoded.Free();
    source.external = nullptr;
}

}  // namespace

clPictureSource::clPictureSource(const clPictureSource& other) : external(other.external) {
    image.CopyFrom(other.image);
    CopyBytes(encoded, other.encoded.data, other.encoded.size);
}

void clGradientCache::Drop() {
    bitmap.Release();
    width = 0;
    height = 0;
}

void clText::KeepNoContexts() {
    for (std::int64_t i = 0; i < gradients.Count(); ++i) {
        gradients.At(i)->cache.Drop();
        gradients.At(i)->dropCache = true;
    }
    for (std::int64_t i = 0; i < pictures.Count(); ++i)
        pictures.At(i)->source.image.ReleaseContext();
}

// The layer for a new record: the one asked for, or for 0 the next free one.
std::int32_t clText::TakeLayer(std::int32_t layer) {
    const std::int32_t taken = layer == 0 ? layerCount : layer;
    if (taken < std::numeric_limits<std::int32_t>::max()) {
        layerCount = std::max(layerCount, taken + 1);
    }
    dirty = true;
    return taken;
}

template <class Record>
Record* clText::Append(clOwnedList<Record>& list, const Record& record, std::int32_t layer) {
    Record* added = list.Add(std::make_unique<Record>(record));
    added->layer = TakeLayer(layer);
    return added;
}

void clText::AddFill(const clTextFill& fill, std::int32_t layer) {
    Append(fills, fill, layer);
}

void clText::AddBox(const clTextBox& box, std::int32_t layer) {
    Append(boxes, box, layer);
}

void clText::AddFrame(const clTextFrame& frame, std::int32_t layer) {
    Append(frames, frame, layer);
}

void clText::AddGradient(const clTextGradient& gradient, std::int32_t layer) {
    Append(gradients, gradient, layer);
}

void clText::AddPicture(const clTextPicture& picture, std::int32_t layer) {
    Append(pictures, picture, layer);
}

void clText::AddPicture(const clTextPicture& picture, HBITMAP bitmap, std::int32_t layer) {
    clPictureSource& source = Append(pictures, picture, layer)->source;
    DropSources(source);
    source.image.CopyFromBitmap(bitmap);
}

void clText::AddPicture(const clTextPicture& picture, const XMemBitmap& image, std::int32_t layer) {
    clPictureSource& source = Append(pictures, picture, layer)->source;
    DropSources(source);
    source.image.CopyFrom(image);
}

void clText::AddPicture(const clTextPicture& picture, const void* bytes, std::int64_t size,
                        std::int32_t layer) {
    clPictureSource& source = Append(pictures, picture, layer)->source;
    DropSources(source);
    CopyBytes(source.encoded, bytes, size);
}

void clText::AddLine(const clTextLine& line, std::int32_t layer) {
    Append(lines, line, layer);
}

void clText::AddIcon(const clTextIcon& icon, std::int32_t layer) {
    clTextIcon* added = Append(icons, icon, layer);
    if (icon.icon != nullptr) added->icon = CopyIcon(icon.icon);
}

void clText::AddText(const clTextString& text, std::int32_t layer) {
    Append(texts, text, layer);
}

void clText::Clear() {
    for (std::int64_t i = 0; i < icons.Count(); ++i) {
        if (icons.At(i)->icon != nullptr) DestroyIcon(icons.At(i)->icon);
    }
    fills.Clear();
    boxes.Clear();
    frames.Clear();
    gradients.Clear();
    pictures.Clear();
    lines.Clear();
    icons.Clear();
    texts.Clear();
    dirty = true;
    paddingX = 0;
    paddingY = 0;
    minimumWidth = 0;
    minimumHeight = 0;
    layerCount = 0;
    stateFlags = 0;
}

namespace {

// Gives each record of `list` with the layer above its own to `add`.
template <class Record, class Add>
void CopyEach(const clOwnedList<Record>& list, Add add) {
    for (std::int64_t i = 0; i < list.Count(); ++i) {
        const Record& record = *list.At(i);
        add(record, record.layer + 1);
    }
}

}  // namespace

void clText::CopyFrom(const clText& other) {
    Clear();
    CopyEach(other.fills, [this](const auto& record, auto layer) { AddFill(record, layer); });
    CopyEach(other.boxes, [this](const auto& record, auto layer) { AddBox(record, layer); });
    CopyEach(other.frames, [this](const auto& record, auto layer) { AddFrame(record, layer); });
    CopyEach(other.gradients,
             [this](const auto& record, auto layer) { AddGradient(record, layer); });
    CopyEach(other.lines, [this](const auto& record, auto layer) { AddLine(record, layer); });
    CopyEach(other.pictures, [this](const auto& record, auto layer) { AddPicture(record, layer); });
    CopyEach(other.icons, [this](const auto& record, auto layer) { AddIcon(record, layer); });
    CopyEach(other.texts, [this](const auto& record, auto layer) { AddText(record, layer); });
}
