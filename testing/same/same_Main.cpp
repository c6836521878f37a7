#include "testing/same/same_Report.h"

/// `write FOLDER` prints what the fixed set computes; the folder gets the mementos, and in
/// `standard-error` what the library said there. `read FOLDER` reads the mementos of another
/// platform in the folder.
int main(int argc, char** argv) {
    const std::string command = argc == 3 ? argv[1] : "", folder = argc == 3 ? argv[2] : "";
    same_Report report;
    if (command == "read") return same_Mementos(report, folder, false) ? 0 : 1;
    if (command != "write" || !std::freopen((folder + "/standard-error").c_str(), "w", stderr)) {
        std::fputs("usage: ktsovu_fixed_set write|read FOLDER\n", stderr);
        return 2;
    }
    same_Texts(report);  // first: its traces are switched on by variables that are read once
    same_Geometry(report);
    same_View(report);
    return same_Mementos(report, folder, true) ? 0 : 1;
}
