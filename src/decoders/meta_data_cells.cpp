#include "decoders/meta_data_cells.h"

clString CellText(const clString& value) {
    clString text(value);
    text.Replace(L"\r", L"; ");
    return text;
}
