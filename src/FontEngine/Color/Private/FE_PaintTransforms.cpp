#include <FontEngine/Color/Private/FE_PaintTransforms.h>

#include <FontEngine/Color/Private/FE_PixelMatrix.h>

#include <array>
#include <cmath>

namespace Vell::FontEngine::Internal {

namespace {

cinder::MatrixAffine2<float> narrowMatrix(const PixelMatrix& matrix) {
    const double(&m)[6] = matrix.m;
    return {static_cast<float>(m[0]), static_cast<float>(m[1]), static_cast<float>(m[2]),
            static_cast<float>(m[3]), static_cast<float>(m[4]), static_cast<float>(m[5])};
}

PixelMatrix translate(double x, double y) {
    return {1, 0, 0, 1, x, y};
}

/// Reads an angle, of which the file has half turns.
double readAngle(TableFields& fields) {
    constexpr double pi = 3.14159265358979323846;
    return fields.f2dot14() * pi;
}

PixelMatrix readTranslation(TableFields& fields) {
    const double x = fields.i16();
    return translate(x, fields.i16());
}

PixelMatrix readScale(TableFields& fields) {
    const double x = fields.f2dot14();
    return {x, 0, 0, fields.f2dot14(), 0, 0};
}

PixelMatrix readUniformScale(TableFields& fields) {
    const double factor = fields.f2dot14();
    return {factor, 0, 0, factor, 0, 0};
}

PixelMatrix readRotation(TableFields& fields) {
    const double angle = readAngle(fields);
    return {std::cos(angle), std::sin(angle), -std::sin(angle), std::cos(angle), 0, 0};
}

PixelMatrix readSkew(TableFields& fields) {
    const double x = std::tan(readAngle(fields));
    return {1, std::tan(readAngle(fields)), -x, 1, 0, 0};
}

struct Placement {
    unsigned int format;
    std::size_t size;
    PixelMatrix (*read)(TableFields& fields);
    bool hasCenter; ///< behind the other fields
};

constexpr std::array<Placement, 9> placements{{
    {14, 4, readTranslation, false},
    {16, 4, readScale, false},
    {18, 8, readScale, true},
    {20, 2, readUniformScale, false},
    {22, 6, readUniformScale, true},
    {24, 2, readRotation, false},
    {26, 6, readRotation, true},
    {28, 4, readSkew, false},
    {30, 8, readSkew, true},
}};

const Placement* findPlacement(unsigned int format) {
    for (const Placement& placement : placements) {
        if (placement.format == format) {
            return &placement;
        }
    }
    return nullptr;
}

} // namespace

bool isPlacement(unsigned int format) {
    return findPlacement(format) != nullptr;
}

std::size_t getPlacementSize(unsigned int format) {
    return findPlacement(format)->size;
}

cinder::MatrixAffine2<float> readPlacement(unsigned int format, TableFields& fields) {
    const Placement& placement = *findPlacement(format);
    const PixelMatrix matrix = placement.read(fields);
    if (!placement.hasCenter) {
        return narrowMatrix(matrix);
    }
    const double x = fields.i16();
    const double y = fields.i16();
    return narrowMatrix(translate(x, y) * matrix * translate(-x, -y));
}

cinder::MatrixAffine2<float> readAffine(TableFields& fields) {
    cinder::MatrixAffine2<float> matrix;
    for (float& entry : matrix.m) { // in this order: xx, yx, xy, yy, dx, dy
        entry = static_cast<float>(fields.fixed());
    }
    return matrix;
}

} // namespace Vell::FontEngine::Internal
