#pragma once

#include <QImage>

enum class Sex
{
    Male,
    Female
};

/// Draws a portrait of 240×320 pixels. The same \a seed always draws the same face.
[[nodiscard]] QImage drawAvatar(Sex sex, quint32 seed);
