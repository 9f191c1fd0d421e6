#pragma once
#include "platform/zo_exception.h"

/// Runs `read`; when the record is short or the folder missing, returns
/// `fallback` instead. Other failures propagate.
template <typename T, typename Read>
T TeskReadOr(const T& fallback, Read&& read) {
    try {
        return read();
    } catch (const ZoFileNonFatalException&) {
        return fallback;
    }
}
