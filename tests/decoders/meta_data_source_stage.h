// A list of files on disk, a scripted decoder, and what a reader makes of them.
#pragma once

#include <gmock/gmock.h>
#include <windows.h>

#include <string>
#include <thread>
#include <vector>

#include "decoders/meta_data_source.h"
#include "foundation/handle.h"
#include "foundation/settings.h"
#include "tests/decoders/row_list.h"
#include "tests/support/decoder_folder.h"
#include "tests/support/eventually.h"
#include "tests/support/scratch_folder.h"
#include "tests/support/text.h"

using Lines = std::vector<std::string>;

inline constexpr const char* facts = "echo=Title\nlength-ms=61000\n";
inline constexpr const wchar_t* gateName = L"tonequarry-test-gate";
inline constexpr const char* gated = "wait=tonequarry-test-gate\n";

class MetaDataSource : public testing::Test {
protected:
    void SetUp() override {
        InitSettings();
        decoders.Add("one", Everywhere(""));
    }
    // No decoder may wait on while the source is destroyed.
    void TearDown() override { OpenGate(); }

    FileRow& AddRow(const wchar_t* name, std::uint64_t sizeBytes = 1) {
        return rows.Add(disk.Path(name), sizeBytes);
    }
    void AddRows(const std::vector<const wchar_t*>& names) {
        for (const wchar_t* name : names)
            AddRow(name);
    }
    // What counts for one file alone, and what for all.
    void Script(const std::string& name, const std::string& lines) {
        script += "[" + name + "]\n" + facts + lines;
        decoders.SetScript("one", script);
    }
    void ScriptAll(const std::string& lines) { decoders.SetScript("one", Everywhere(lines)); }
    const std::string& Everywhere(const std::string& lines) {
        script = std::string("type=.abc|A\n") + facts + lines;
        return script;
    }
    void OpenGate() const { SetEvent(gate.Get()); }
    // Lets a gated decoder go when the reader is asked to stop, and not before.
    std::thread OpenGateAtStop(const clMetaDataSource& source) const {
        return std::thread([this, stop = source.Worker().StopEvent()] {
            EXPECT_EQ(WaitForSingleObject(stop, 10000), WAIT_OBJECT_0);
            OpenGate();
        });
    }
    std::string Name(const clString& path) const {
        return Utf8(path.Mid(path.FindLast(L'\\') + 1));
    }
    long Opened(const wchar_t* name) const {
        return decoders.Count("one", "open " + Utf8(disk.Path(name)) + " 28");
    }
    bool EventuallyOpened(const wchar_t* name) const {
        return Eventually([&] { return Opened(name) > 0; });
    }
    // "file: title's file" of each finished item.
    Lines Taken(clMetaDataSource& source) {
        Lines lines;
        drained = source.TakeFinished([&](const MetaDataItem& item) {
            EXPECT_EQ(item.row, rows.RowOf(item.rowIndex));
            lines.push_back(Name(item.row->path) + ": " + Name(item.tags.Get(L"Title")));
        });
        return lines;
    }
    Lines TakenAtEnd(clMetaDataSource& source) {
        EXPECT_TRUE(Eventually([&] { return !source.IsReading(); }));
        return Taken(source);
    }
    // The names of the opened files, in order; "!" in front where a record was
    // not zeroed or the flags were not 28.
    Lines OpenedInOrder() const {
        Lines names;
        for (const std::string& line : decoders.Log("one")) {
            if (line.rfind("open ", 0) != 0) continue;
            const bool clean = line.size() > 3 && line.substr(line.size() - 3) == " 28";
            const std::size_t slash = line.find_last_of('\\');
            names.push_back((clean ? "" : "!") + line.substr(slash + 1, line.size() - slash - 4));
        }
        return names;
    }

    clScriptedFolder decoders;
    ScratchFolder disk;
    RowList rows;
    std::string script;
    bool drained = false;
    const clKernelHandle gate{CreateEventW(nullptr, TRUE, FALSE, gateName)};
};
