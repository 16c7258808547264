#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/QxHostValue.h"

/// The facts that users of a compiled shader need. Facts that a file does not contain, or that come
/// after an error in it, are empty; none is guessed. The facts of byte-code and shared objects have
/// the same form, so that listings do not depend on the kind of file.
struct SqxShaderFacts {
    enum class Kind { ByteCode, SharedObject };

    enum class Default {
        Known,
        PerPoint,        // depends on the shading point
        ZeroOrPerPoint,  // a loaded shared object has zero in both cases
        Unknown,
    };

    struct Parameter {
        std::string name;
        bool varying = false;
        QxValueType type = QxValueType::Float;
        std::optional<std::size_t> arrayLength;  // nothing if it is not an array
        std::string space;                       // of the default value as given; "" for none
        std::optional<bool> output;
        Default defaultIs = Default::Unknown;
        std::optional<QxHostValue> value;  // default value, if `Known` or `ZeroOrPerPoint`
    };

    /// A predefined variable that the shader uses.
    struct Predefined {
        std::string name;
        std::optional<bool> read;
        std::optional<bool> written;
    };

    /// The error in a damaged file.
    struct Fault {
        int line = 0;
        std::string message;  // with the line and, if known, the section
    };

    Kind kind = Kind::ByteCode;
    std::string type;  // "surface" and so on; empty if unknown
    std::vector<Parameter> parameters;
    std::optional<bool> usesLights;
    std::optional<bool> tracesRays;
    std::optional<bool> modifiesP;
    std::vector<Predefined> predefined;
    std::optional<std::vector<std::string>> shadeopLibraries;
    std::string defaultsFault;  // why default values were not computed; empty if that did not fail
    std::optional<Fault> fault;
};

/// Folders with shadeop libraries that may be loaded, which runs their code; `nullopt` if no
/// library may be loaded.
using SqxTrustedFolders = std::optional<std::vector<std::string>>;

/// Reads byte-code with any contents; in a damaged file, the part before its error. `name` is for
/// messages. Shadeop libraries that default values call are loaded from the folders. If that is not
/// allowed, or loading or computing fails, `defaultsFault` says why, and the default values that
/// call no shadeops are computed if possible; all other facts are valid. Never throws because of
/// the contents of the file.
[[nodiscard]] SqxShaderFacts SqxByteCodeFacts(std::string_view bytes, const std::string& name,
                                              const SqxTrustedFolders& shadeopFolders);

/// Reads the facts in a shared object without loading it; in damaged facts, the part before the
/// error. Returns nothing if the object contains no facts, because an older compiler built it, or
/// those of several shaders. `name` and the folders are as above. Throws `QxHostError` if the bytes
/// are not a complete library for this machine.
[[nodiscard]] std::optional<SqxShaderFacts> SqxStoredFacts(std::string_view bytes,
                                                           const std::string& name,
                                                           const SqxTrustedFolders& shadeopFolders);

/// Loads a shared object that contains no facts, which runs its code, computes its default values,
/// and unloads it. Throws `QxHostError` if it is not a shader, or if its shadeop libraries are not
/// in the folders or a default value cannot be computed.
[[nodiscard]] SqxShaderFacts SqxSharedObjectFacts(const std::string& path,
                                                  const std::vector<std::string>& shadeopFolders);
