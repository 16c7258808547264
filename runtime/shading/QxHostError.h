#pragma once

#include <stdexcept>

/// A file that is no shader, or a name or value that does not fit one. The text is for the user.
class QxHostError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// A run that ended because its host wanted no more of it.
class QxHostStopped : public QxHostError {
public:
    using QxHostError::QxHostError;
};
