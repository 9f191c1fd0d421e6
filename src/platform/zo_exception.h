#pragma once
#include <stdexcept>
#include <string>

/// A failure that ends the operation at hand; the message is fit to show.
class ZoException : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

/// Data that is missing or short inside a project-file folder. Readers catch
/// it and fall back to the record's defaults.
class ZoFileNonFatalException : public ZoException {
  public:
    using ZoException::ZoException;
};
