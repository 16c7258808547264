#pragma once

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "options/SqxOptionTable.h"
#include "options/SqxOptionWords.h"
#include "picture/SqxPictureSettings.h"
#include "picture/SqxShaderBuild.h"

/// The options of the command line of `sqxshade`.
struct SqxShadeOptions {
    struct Shader {
        std::string path;
        std::vector<std::pair<std::string, std::string>> parameters;  // names and values, as typed
    };

    std::vector<Shader> shaders;
    std::vector<std::pair<std::string, std::string>> textures;  // names and files
    std::string output;
    bool sheet = false;          // one file with a picture for each shader
    bool linear = false;         // writes linear values, without encoding
    SqxPictureSettings picture;  // without its shaders and textures
    SqxBuildOptions build;
    SqxInformation information = SqxInformation::None;
};

/// Reads an option that another program adds to those of `sqxshade`. Returns false if the word is
/// not such an option.
using SqxReadMoreOptions = std::function<bool(SqxOptionWords& words)>;

/// Reads `arguments`, the words after the name of the program. For each option, calls `readMore`
/// first, unless it is empty. Throws `SqxUsageError` for an unknown option, a missing or invalid
/// value, no shader, or a picture that is too large.
[[nodiscard]] SqxShadeOptions SqxReadShadeOptions(const std::vector<std::string>& arguments,
                                                  const SqxReadMoreOptions& readMore = {});

/// The description of the program, for its help, manual page and completion.
[[nodiscard]] const SqxProgram& SqxShadeProgram();

/// Returns the numbers of a list such as `1,0.5,-2`. Throws `SqxPictureError`, whose text names
/// `what`, if the text is not a list of finite numbers.
[[nodiscard]] std::vector<float> SqxReadNumbers(const std::string& text, const std::string& what);

/// Returns the parts of a text between separators, including empty ones.
[[nodiscard]] std::vector<std::string> SqxSplit(const std::string& text, char separator);
