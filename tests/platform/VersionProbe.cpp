// SPDX-License-Identifier: MIT
// A program without a version resource: prints whether one was found all the same.
#include "platform/ProductVersion.h"

#include <cstdio>

int main()
{
    std::fputs(platform::ReadProductVersion() ? "found" : "none", stdout);
    return 0;
}
