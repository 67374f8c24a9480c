// SPDX-License-Identifier: MIT
// Light or dark, on every Qt that is supported.
#pragma once

enum class ColourScheme { FollowSystem, Light, Dark };

/// Sets the colour scheme of the application; set the style first. Where the platform takes a light or a dark
/// scheme (Qt 6.8 or later and not every Linux desktop), the style draws by it; elsewhere the application
/// gets a palette. Following the system means the colours that the desktop has chosen, a high-contrast one's
/// for example, or else the style's own.
void SetColourScheme(ColourScheme scheme);
