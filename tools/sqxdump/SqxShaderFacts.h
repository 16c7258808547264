#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/QxHostValue.h"

/// The facts that users of a compiled shader need. Those that a file does not contain, or that come
/// after its fault, are empty: nothing is guessed. Both kinds of files give the same facts, so that
/// all who print them look at no file.
struct SqxShaderFacts {
    enum class Kind { ByteCode, SharedObject };

    enum class Default {
        Known,
        PerPoint,        // depends on the shading point
        ZeroOrPerPoint,  // a loaded shared object has zero in place of such a value
        Unknown,
    };

    struct Parameter {
        std::string name;
        bool varying = false;
        QxValueType type = QxValueType::Float;
        std::optional<std::size_t> arrayLength;  // nothing for what is no array
        std::string space;                       // that the default value is given in; "" for none
        std::optional<bool> output;
        Default defaultIs = Default::Unknown;
        std::optional<QxHostValue> value;  // the default one
    };

    /// A variable that the shader knows without declaring it, and uses.
    struct Predefined {
        std::string name;
        std::optional<bool> read;
        std::optional<bool> written;
    };

    /// Where a damaged file is at fault.
    struct Fault {
        int line = 0;
        std::string message;  // with line and section
    };

    Kind kind = Kind::ByteCode;
    std::string type;  // "surface" and so on; empty if not even this is known
    std::vector<Parameter> parameters;
    std::optional<bool> usesLights;
    std::optional<bool> tracesRays;
    std::optional<bool> modifiesP;
    std::vector<Predefined> predefined;
    std::optional<std::vector<std::string>> shadeopLibraries;
    std::string defaultsFault;  // why default values are not known; empty if they are
    std::optional<Fault> fault;
};

/// Folders with libraries of shadeops that may be loaded, which runs their code; none: no library
/// may be loaded.
using SqxTrustedFolders = std::optional<std::vector<std::string>>;

/// Reads byte-code, whatever it holds: of a damaged file it reads the part before its fault.
/// `name`: for messages. The libraries of shadeops that default values call are loaded from the
/// folders; without them, and if anything else goes wrong with default values, `defaultsFault` says
/// so and the other facts are valid. Never throws because of the file's contents.
[[nodiscard]] SqxShaderFacts SqxByteCodeFacts(std::string_view bytes, const std::string& name,
                                              const SqxTrustedFolders& shadeopFolders);

/// Reads what a shared object says about its shader, without loading it; a damaged one says as much
/// as precedes the fault. Nothing if it does not say, as older compilers built them. The folders
/// are for default values, as above. Throws `QxHostError` if the bytes are no whole library.
[[nodiscard]] std::optional<SqxShaderFacts> SqxStoredFacts(std::string_view bytes,
                                                           const std::string& name,
                                                           const SqxTrustedFolders& shadeopFolders);

/// Loads a shared object, which runs code of it, has its default values computed, and unloads it:
/// for those that do not say. Throws `QxHostError` if it is no shader.
[[nodiscard]] SqxShaderFacts SqxSharedObjectFacts(const std::string& path,
                                                  const std::vector<std::string>& shadeopFolders);
