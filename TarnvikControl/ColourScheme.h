// SPDX-License-Identifier: MIT
// Light or dark, on every Qt that is supported.
#pragma once

enum class ColourScheme { FollowSystem, Light, Dark };

/// Sets the colour scheme of the application; set the style first. From Qt 6.8 on the style draws by it;
/// before, the application gets a palette: a light or a dark one, or the style's own to follow the system.
void SetColourScheme(ColourScheme scheme);
