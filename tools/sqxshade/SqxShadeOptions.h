#pragma once

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "options/SqxOptionTable.h"
#include "options/SqxOptionWords.h"
#include "picture/SqxPictureSettings.h"
#include "picture/SqxShaderBuild.h"

/// What the command line asks for.
struct SqxShadeOptions {
    struct Shader {
        std::string path;
        std::vector<std::pair<std::string, std::string>> parameters;  // names and values, as typed
    };

    std::vector<Shader> shaders;
    std::vector<std::pair<std::string, std::string>> textures;  // names and files
    std::string output;
    bool sheet = false;          // a picture for each shader, side by side in one file
    bool linear = false;         // writes the values as they are
    SqxPictureSettings picture;  // but for its shaders and textures
    SqxBuildOptions build;
    SqxInformation information = SqxInformation::None;
};

/// Reads an option that another program has beside those of `sqxshade`; false if it has no such
/// one.
using SqxReadMoreOptions = std::function<bool(SqxOptionWords& words)>;

/// `arguments` are the words after the name of the program. For each option `readMore` is called
/// first. Throws `SqxUsageError`.
[[nodiscard]] SqxShadeOptions SqxReadShadeOptions(const std::vector<std::string>& arguments,
                                                  const SqxReadMoreOptions& readMore = {});

/// How the program presents itself.
[[nodiscard]] const SqxProgram& SqxShadeProgram();

/// The numbers of a list such as `1,0.5,-2`. Throws `SqxPictureError`, whose text names `what`.
[[nodiscard]] std::vector<float> SqxReadNumbers(const std::string& text, const std::string& what);

/// The pieces of a text between separators, also empty ones.
[[nodiscard]] std::vector<std::string> SqxSplit(const std::string& text, char separator);
