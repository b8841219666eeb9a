#include "tests/selection/oracle/script.h"

#include <cstddef>

namespace oracle {
namespace {

const char* NameOf(Act act) {
    switch (act) {
        case Act::ClickPicture:
            return "click the state picture of";
        case Act::PressSpace:
            return "press Space in the tree";
        case Act::ClickLabel:
            return "click the label of";
        case Act::SelectByKeyboard:
            return "select by an arrow key";
        case Act::ClickExpander:
            return "click the expander of";
        case Act::ClickRow:
            return "click the tick of the row";
        case Act::CheckAll:
            return "row menu: Check All";
        case Act::UncheckAll:
            return "row menu: Uncheck All";
        case Act::Invert:
            return "row menu: Invert Selection";
        case Act::LeaveMenu:
            return "row menu, left without a choice";
        case Act::ResetYes:
            return "Reset, answered Yes";
        case Act::ResetNo:
            return "Reset, answered No";
        case Act::Refresh:
            return "Refresh";
        case Act::DriveChange:
            return "the drive-change message";
        case Act::MakeFolder:
            return "disk: a new folder in";
        case Act::DeleteFolder:
            return "disk: gone is the folder";
        case Act::HideFolder:
            return "disk: hidden or not is the folder";
        case Act::MakeFile:
            return "disk: a new file in";
        case Act::DeleteFile:
            return "disk: gone is the file";
        case Act::MountVolume:
            return "disk: mounted or not is";
        case Act::ExcludeType:
            return "filter dialog: type";
        case Act::UntickInListDialog:
            return "list dialog: untick";
        case Act::CloseListDialog:
            return "list dialog: close";
        case Act::ForgetFile:
            return "forget the file";
        case Act::ChangeRowTick:
            return "store a tick for the row";
        case Act::ClearBranch:
            return "clear the states of the children of";
        case Act::ApplyToChildren:
            return "pass the state on to the children of";
        case Act::UpdateAncestors:
            return "update the ancestors from";
        case Act::Count:
            break;
    }
    return "?";
}

}  // namespace

std::string Describe(const Action& action) {
    std::string out = NameOf(action.act);
    if (!action.target.empty()) out += " \"" + Utf8(action.target) + "\"";
    if (!action.name.empty()) out += ", called \"" + Utf8(action.name) + "\"";
    switch (action.act) {
        case Act::ExcludeType:
            return out + " number " + std::to_string(action.number + 1) +
                   (action.on ? ", excluded" : ", not excluded");
        case Act::ChangeRowTick:
            return out + (action.on ? ", ticked" : ", unticked");
        case Act::HideFolder:
            return out + (action.on ? ", hidden" : ", not hidden");
        case Act::MountVolume:
            return out + (action.on ? ", mounted" : ", not mounted");
        default:
            return out;
    }
}

std::string Describe(const Script& script) {
    std::string out;
    for (std::size_t i = 0; i < script.size(); ++i) {
        out += "  " + std::to_string(i + 1) + ". " + Describe(script[i]) + "\n";
    }
    return out;
}

}  // namespace oracle
