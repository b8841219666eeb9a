// Turns the selection into a flat list of files.
#pragma once

#include "decoders/audio_type.h"
#include "foundation/arrays.h"
#include "foundation/string.h"
#include "selection/folder_walk.h"
#include "selection/selection_model.h"

// The test that decides what an audio file is: the extension, without regard to
// the case of A to Z, is that of a type that is not excluded.
class AudioTypeFilter {
public:
    // `types` is read at each test and must outlive the filter.
    explicit AudioTypeFilter(const clAudioTypes& types) : types_(types) {}

    // True for a file of a wanted type. Remembers the extension, so that a run
    // of files of one type costs one comparison each.
    bool IsWantedAudioFile(const clString& path);
    // Must follow each change of the types: the remembered one may be excluded now.
    void ForgetLastAudioType() { _LastAudioType.Assign(L""); }

private:
    const clAudioTypes& types_;
    clString _LastAudioType;  // as it stood in a file's name; empty at first
};

// Appends to `files`: the recursive folders, depth first and in the order of the
// file system; the single folders; the files ticked one by one, untested. Nothing
// is sorted and duplicates stay. Hidden folders are not entered but tested like
// files. A folder that cannot be read adds nothing. User interface thread; blocks
// it for the length of the walk.
void GatherFiles(const SelectionLists& lists, AudioTypeFilter& filter, FolderWalk& walk,
                 clStringList& files);
