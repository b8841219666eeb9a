#include "dialogs/filter_labels.h"

void FilterLabels(const clAudioTypes& types, clStringList& labels) {
    for (std::int64_t i = 0; i < types.Count(); ++i) {
        const clAudioType& type = types.At(i);
        clString label(type.description);
        label.Append(L"   (");
        label.Append(type.extension);
        label.Append(L')');
        labels.Add(label, i);
    }
    labels.Sort(1);
}
