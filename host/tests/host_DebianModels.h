#pragma once

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <string>

/// The folder of Debian's assimp-testmodels; "" when they are not there.
inline std::string host_ModelFolder() {
    const char* chosen = std::getenv("KTSOVU_MODELS");
    const std::string folder = chosen ? chosen : KTSOVU_MODELS;
    return std::filesystem::is_directory(folder) ? folder : "";
}

/// The engine of 67 parts in that folder.
inline std::string host_Engine(const std::string& folder) {
    return folder + "/glTF2/2CylinderEngine-glTF-Binary/2CylinderEngine.glb";
}

#define KTSOVU_REQUIRE_MODELS(folder)              \
    const std::string folder = host_ModelFolder(); \
    if (folder.empty()) GTEST_SKIP() << "NOT TESTED: no models in KTSOVU_MODELS=" KTSOVU_MODELS
