// Replaces SqxListingJson.cpp in a build without nlohmann-json.

#include "options/SqxOptionWords.h"
#include "sqxdump/SqxListing.h"

std::string SqxListingJson(const SqxListed&, const std::vector<std::string>&)
{
    throw SqxUsageError("This program was built without nlohmann-json, which '--json' needs");
}
