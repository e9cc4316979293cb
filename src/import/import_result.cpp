#include "import/import_result.h"

namespace kalmora {

const char* NameOf(ImportResult result) {
    switch (result) {
        case ImportResult::Copied:
            return "copied";
        case ImportResult::Moved:
            return "moved";
        case ImportResult::Linked:
            return "linked";
        case ImportResult::Same:
            return "same file";
        case ImportResult::Differs:
            return "differs";
        case ImportResult::InPlace:
            return "in place";
        case ImportResult::Removed:
            return "removed";
        case ImportResult::PassedOver:
            return "passed over";
        case ImportResult::Followed:
            return "link followed";
        case ImportResult::VisitedOnce:
            return "taken already";
        case ImportResult::Gone:
            return "gone";
        case ImportResult::Denied:
            return "denied";
        case ImportResult::NoSpace:
            return "no space";
        case ImportResult::Taken:
            return "name taken";
        case ImportResult::Changed:
            return "changed meanwhile";
        case ImportResult::Unreadable:
            return "cannot be listed";
        case ImportResult::MeetsTarget:
            return "meets the data folder";
        case ImportResult::Failed:
            break;
    }
    return "failed";
}

ImportResult ImportResultOf(files::FileResult result) {
    switch (result) {
        case files::FileResult::NotFound:
            return ImportResult::Gone;
        case files::FileResult::Denied:
            return ImportResult::Denied;
        case files::FileResult::NoSpace:
            return ImportResult::NoSpace;
        case files::FileResult::Exists:
            return ImportResult::Taken;
        case files::FileResult::Done:
            return ImportResult::Copied;
        case files::FileResult::Failed:
            break;
    }
    return ImportResult::Failed;
}

}  // namespace kalmora
