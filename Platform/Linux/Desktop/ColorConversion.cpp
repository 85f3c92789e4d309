#include "Platform/Native/ColorConversion.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

// Without a profile, the display is taken for one of sRGB: colours pass from space to space as its
// coded values. Every curve treats what lies beneath 0 as it does what lies above.
namespace Platform {
namespace {

using Components = Color::Components;
using Space = Color::Space;
using Triple = std::array<double, 3>;
using Matrix = std::array<Triple, 3>;

// IEC 61966-2-1, with the limits at which its two branches meet.
double sRGBLight(double code) {
    const double size = std::abs(code);
    return std::copysign(size <= 0.04045 ? size / 12.92 : std::pow((size + 0.055) / 1.055, 2.4),
                         code);
}

double sRGBCode(double light) {
    const double size = std::abs(light);
    return std::copysign(size <= 0.0031308 ? size * 12.92 : 1.055 * std::pow(size, 1 / 2.4) - 0.055,
                         light);
}

constexpr double genericGamma = 1.8;

double genericLight(double code) {
    return std::copysign(std::pow(std::abs(code), genericGamma), code);
}

double genericCode(double light) {
    return std::copysign(std::pow(std::abs(light), 1 / genericGamma), light);
}

template <class Curve>
Triple through(const Curve& curve, const Components& values) {
    return {curve(values[0]), curve(values[1]), curve(values[2])};
}

template <class Curve>
Components through(const Curve& curve, const Triple& values) {
    return {curve(values[0]), curve(values[1]), curve(values[2])};
}

constexpr Triple product(const Matrix& matrix, const Triple& vector) {
    Triple result{};
    for (std::size_t row = 0; row < 3; ++row) {
        for (std::size_t column = 0; column < 3; ++column)
            result[row] += matrix[row][column] * vector[column];
    }
    return result;
}

constexpr Matrix inverse(const Matrix& m) {
    const auto minor = [&m](std::size_t row, std::size_t column) {
        const std::size_t above = (row + 1) % 3;
        const std::size_t below = (row + 2) % 3;
        const std::size_t left = (column + 1) % 3;
        const std::size_t right = (column + 2) % 3;
        return m[above][left] * m[below][right] - m[above][right] * m[below][left];
    };
    double determinant = 0;
    for (std::size_t column = 0; column < 3; ++column)
        determinant += m[0][column] * minor(0, column);
    Matrix result{};
    for (std::size_t row = 0; row < 3; ++row) {
        for (std::size_t column = 0; column < 3; ++column)
            result[row][column] = minor(column, row) / determinant;
    }
    return result;
}

// The printed figures are rounded: white is to be exactly the white of D50 (ICC.1).
constexpr Matrix withWhiteOfD50(Matrix columns) {
    constexpr Triple white = {0.9642, 1, 0.8249};
    for (std::size_t row = 0; row < 3; ++row) {
        const double sum = columns[row][0] + columns[row][1] + columns[row][2];
        for (double& value : columns[row])
            value *= white[row] / sum;
    }
    return columns;
}

// Light to XYZ, adapted from the white of D65 to that of D50: the matrix columns (rXYZ, gXYZ, bXYZ)
// of the ICC profiles "sRGB IEC61966-2.1" and "Generic RGB Profile".
constexpr Matrix sRGBToXYZ = withWhiteOfD50(
    {{{0.43607, 0.38515, 0.14307}, {0.22249, 0.71687, 0.06061}, {0.01392, 0.09708, 0.71410}}});
constexpr Matrix genericToXYZ = withWhiteOfD50(
    {{{0.45427, 0.35332, 0.15662}, {0.24263, 0.67441, 0.08336}, {0.01482, 0.09042, 0.71953}}});
constexpr Matrix xyzToSRGB = inverse(sRGBToXYZ);
constexpr Matrix xyzToGeneric = inverse(genericToXYZ);

Components codesOfGenericRGB(const Components& components) {
    const auto xyz = product(genericToXYZ, through(genericLight, components));
    return through(sRGBCode, product(xyzToSRGB, xyz));
}

Components genericRGBOf(const Components& codes) {
    const auto xyz = product(sRGBToXYZ, through(sRGBLight, codes));
    return through(genericCode, product(xyzToGeneric, xyz));
}

double luminanceOf(const Components& codes) {
    return product(sRGBToXYZ, through(sRGBLight, codes))[1];
}

// The formula of devices that have no profile: black darkens all inks alike.
Components codesOfCMYK(const Components& inks) {
    const double paper = 1 - inks[3];
    return {(1 - inks[0]) * paper, (1 - inks[1]) * paper, (1 - inks[2]) * paper};
}

Components cmykOf(const Components& codes) {
    const double paper = std::max({codes[0], codes[1], codes[2]});
    if (paper == 0)
        return {0, 0, 0, 1};
    return {1 - codes[0] / paper, 1 - codes[1] / paper, 1 - codes[2] / paper, 1 - paper};
}

Components codesOf(const Components& components, Space space) {
    switch (space) {
    case Space::genericRGB:
        return codesOfGenericRGB(components);
    case Space::deviceGray:
        return {components[0], components[0], components[0]};
    case Space::genericGray: {
        const double code = sRGBCode(genericLight(components[0]));
        return {code, code, code};
    }
    case Space::deviceCMYK:
        return codesOfCMYK(components);
    default:
        return components;
    }
}

Components componentsOf(const Components& codes, Space space) {
    switch (space) {
    case Space::genericRGB:
        return genericRGBOf(codes);
    case Space::deviceGray:
        return {sRGBCode(luminanceOf(codes))};
    case Space::genericGray:
        return {genericCode(luminanceOf(codes))};
    case Space::deviceCMYK:
        return cmykOf(codes);
    default:
        return codes;
    }
}

} // namespace

std::optional<Components> convertComponents(const Components& components, Space from, Space to) {
    return componentsOf(codesOf(components, from), to);
}

} // namespace Platform
