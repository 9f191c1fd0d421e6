#pragma once
// Contact Technical Support: a prepared mail in the user's own mail program.
#include <cstdint>
#include <string_view>

#include "platform/zo_string.h"

inline constexpr const char* kTeskSupportAddress = "support@kestrane.com";

/// "Version", "Build Date", "Build Type" and the operating system, one per
/// line between lines of dashes.
ZoString TeskSystemInfoBlock(std::string_view operatingSystem);

/// A mailto: address to the support team with the subject "Technical Support
/// Question (%08X)" of `reference` and the question form and `systemInfo`
/// as the body.
ZoString TeskSupportMailUrl(uint32_t reference, std::string_view systemInfo);

/// Version and build facts shown in the about box and sent with support mail.
ZoString TeskVersionText();
ZoString TeskBuildDateText();
ZoString TeskBuildTypeText();
