#pragma once

#include <stdexcept>

/// The file is not a shader, or a name or value does not fit the shader. The text is for the user.
class QxHostError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// The host stopped the run.
class QxHostStopped : public QxHostError {
public:
    using QxHostError::QxHostError;
};
