#include "decoders/file_properties.h"
#include "decoders/units_setting.h"

bool ReadUnitsInHertz() {
    return clUnitsSetting().InHertz();
}
