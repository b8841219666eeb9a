// The real program in a folder of its own, started and driven from outside.
#pragma once

#include <windows.h>

#include <memory>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "tests/support/converter_stage.h"
#include "tests/support/scratch_folder.h"
#include "tests/ui/pointer.h"
#include "tests/ui/remote_controls.h"

// Moves the pointer there and waits until the display has followed: with two
// processes its echo of an earlier move may come in between.
void SettlePointer(POINT screen);
// Clicks there and waits until the program has taken the click: it asks where the
// pointer is when it comes to the press, and finds it where the next step put it.
// Not longer than three seconds: a program that waits for its converter takes none.
void ClickSettled(POINT screen, PointerButton button = PointerButton::Left);

// Stops the thread of a window, as a busy machine would, and lets it go on by itself.
class Standstill {
public:
    Standstill(HWND window, DWORD milliseconds);
    Standstill(const Standstill&) = delete;
    Standstill& operator=(const Standstill&) = delete;
    // Waits for the end.
    ~Standstill();

private:
    HANDLE stopped;
    std::thread end;
};

// The bar's buttons, by their left edges.
enum class BarButton { Convert = 4, List = 52, Refresh = 100, Reset = 148, Filter = 196 };

// The program while it runs; ended by force at the end if it still does.
class RunningProgram {
public:
    RunningProgram(std::wstring commandLine, const std::wstring& folder);
    RunningProgram(const RunningProgram&) = delete;
    RunningProgram& operator=(const RunningProgram&) = delete;
    ~RunningProgram();

    HWND Form() const { return form; }
    RemoteTree Tree() const;
    RemoteList List() const;
    // A visible dialog other than the main form, when it is there; throws after
    // ten seconds. An empty title takes any.
    HWND Dialog(const std::wstring& title = {}) const;
    bool HasDialog() const { return FindDialog({}) != nullptr; }
    // Waits for the message box, answers it and returns its text.
    std::wstring AnswerBox(int button) const;
    void PressButton(BarButton button) const;
    bool IsRunning() const;
    // Closes the window; the exit code. Throws if the process does not end.
    DWORD Close();
    DWORD ProcessId() const { return process.dwProcessId; }

private:
    HWND FindForm() const;
    HWND FindDialog(const std::wstring& title) const;

    PROCESS_INFORMATION process = {};
    HWND form = nullptr;
};

// A program folder with scripted decoders, and a folder with music beside it,
// right below a drive. The settings begin empty, and come back at the end.
class ProgramStage {
public:
    ProgramStage();
    ProgramStage(const ProgramStage&) = delete;
    ProgramStage& operator=(const ProgramStage&) = delete;
    ~ProgramStage();

    const std::wstring& ProgramFolder() const { return program; }
    const std::wstring& Music() const { return music; }  // with its backslash
    // Script of the decoder; it answers for what its type= lines tell.
    void AddDecoder(const std::wstring& name, const std::string& script) const;
    // The calls that the decoder has had, one in a line; empty before the first.
    std::string DecoderLog(const std::wstring& name) const;
    // Makes a file of that many bytes beneath the music folder, and its folders.
    std::wstring AddFile(const std::wstring& name, std::size_t bytes = 0) const;
    std::wstring AddFolder(const std::wstring& name) const;

    // Starts the program with what stands behind its name, and waits for the form.
    RunningProgram& Start(const std::wstring& arguments = {});
    // As typed, without quotes around the program's name.
    RunningProgram& StartUnquoted();
    RunningProgram& Program() const { return *running; }
    DWORD Close() const { return running->Close(); }

    std::optional<DWORD> Number(const wchar_t* name) const;
    std::optional<std::wstring> Text(const wchar_t* name) const;
    void SetNumber(const wchar_t* name, DWORD value) const;
    void SetText(const wchar_t* name, const std::wstring& text) const;

private:
    class KeptSettings {
    public:
        KeptSettings();
        KeptSettings(const KeptSettings&) = delete;
        KeptSettings& operator=(const KeptSettings&) = delete;
        ~KeptSettings();
    };

    // Removes the folder of all scratch folders when the last one has gone.
    class ScratchRoot {
    public:
        ScratchRoot() = default;
        ScratchRoot(const ScratchRoot&) = delete;
        ScratchRoot& operator=(const ScratchRoot&) = delete;
        ~ScratchRoot();
    };

    KeptSettings settings;
    ScratchRoot root;
    // Below the drive itself: what leads to the usual one may be hidden.
    clEnvironmentValue temporary;
    ScratchFolder parent;
    std::wstring program;
    std::wstring music;
    std::unique_ptr<RunningProgram> running;
};
