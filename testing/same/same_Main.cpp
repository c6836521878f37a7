#include <cstdio>
#include <string>

#include "testing/same/same_Report.h"

/// usage: ktsovu_fixed_set write FOLDER   computes the fixed set and prints it; writes mementos,
/// and
///                                        standard-error: what the library said on standard error
///        ktsovu_fixed_set read FOLDER    reads the mementos in the folder, which may be those of
///                                        another platform
int main(int argc, char** argv) {
    const std::string command = argc == 3 ? argv[1] : "";
    same_Report report;
    if (command == "read") return same_ReadMementos(report, argv[2]) ? 0 : 1;
    if (command != "write") {
        std::fputs("usage: ktsovu_fixed_set write|read FOLDER\n", stderr);
        return 2;
    }
    const std::string folder = argv[2];
    if (!std::freopen((folder + "/standard-error").c_str(), "w", stderr)) return 2;
    for (auto* part : {same_Texts, same_Geometry, same_Boxes, same_Rotations, same_View}) {
        part(report);
    }
    same_WriteMementos(report, folder);
    return 0;
}
