#pragma once

#include <stdexcept>

/// Thrown by the host library and the machine, for example if a file is not a shader, or if a name
/// or value does not fit the shader. The text is for the user.
class QxHostError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Thrown if the host has stopped a run.
class QxHostStopped : public QxHostError {
public:
    using QxHostError::QxHostError;
};
