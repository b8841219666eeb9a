#include "mainwindow/row_pictures.h"

void clRowPictures::Paint(HDC target, std::int32_t x, const Key& key, const SIZE& size,
                          const std::function<void(HDC)>& draw) {
    std::unique_ptr<XMemBitmap>& picture = pictures[key];
    if (picture == nullptr) {
        picture = std::make_unique<XMemBitmap>();
        picture->CreateEmpty(target, size.cx, size.cy);
        picture->FillColour(key.background);
        draw(picture->Context());
    }
    picture->Blit(target, x, 0);
    // One that could not be made is tried again.
    if (picture->Bitmap() == nullptr) pictures.erase(key);
}
