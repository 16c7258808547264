#pragma once

#include "QxGeometry.h"

// Matrices are transforms: rows 0 to 2 are the images of the axes, row 3 is that of the origin.

/// Points are rows, so `a` is applied first.
inline QxMatrix44 operator*(const QxMatrix44& a, const QxMatrix44& b)
{
    QxMatrix44 result = {};
    for (int i = 0; i < 4; ++i)
        for (int k = 0; k < 4; ++k)
            for (int j = 0; j < 4; ++j)
                result[i][j] += a[i][k] * b[k][j];
    return result;
}

inline QxMatrix44 operator*(const QxMatrix44& a, float factor)
{
    QxMatrix44 result = a;
    for (int i = 0; i < 16; ++i)
        result[i / 4][i % 4] *= factor;
    return result;
}

inline QxMatrix44 operator*(float factor, const QxMatrix44& a)
{
    return a * factor;
}

inline QxMatrix44 operator+(const QxMatrix44& a, const QxMatrix44& b)
{
    QxMatrix44 result = a;
    for (int i = 0; i < 16; ++i)
        result[i / 4][i % 4] += b[i / 4][i % 4];
    return result;
}

inline QxMatrix44 operator-(const QxMatrix44& a, const QxMatrix44& b)
{
    return a + b * -1.0f;
}

inline QxMatrix44 operator-(const QxMatrix44& a)
{
    return a * -1.0f;
}

inline QxMatrix44 QxTransposed(const QxMatrix44& a)
{
    QxMatrix44 result;
    for (int i = 0; i < 4; ++i)
        for (int j = 0; j < 4; ++j)
            result[i][j] = a[j][i];
    return result;
}

/// Gauss-Jordan elimination with partial pivoting, in double precision (William Press and others,
/// "Numerical Recipes", 2.1). If a pivot is 0, since the matrix is singular, the inverse is the
/// zero matrix and the determinant is 0, since a shader must get some value.
class QxInversion {
public:
    explicit QxInversion(const QxMatrix44& matrix) : m_inverse(QxMatrix44::Identity())
    {
        double work[4][8];
        for (int i = 0; i < 4; ++i)
            for (int j = 0; j < 4; ++j) {
                work[i][j] = matrix[i][j];
                work[i][4 + j] = i == j;
            }
        for (int column = 0; column < 4; ++column)
            if (!Eliminate(work, column))
                return;
        for (int i = 0; i < 4; ++i)
            for (int j = 0; j < 4; ++j)
                m_inverse[i][j] = static_cast<float>(work[i][4 + j]);
    }
    const QxMatrix44& Inverse() const { return m_inverse; }
    float Determinant() const { return static_cast<float>(m_determinant); }

private:
    bool Eliminate(double (&work)[4][8], int column)
    {
        int pivot = column;
        for (int row = column + 1; row < 4; ++row)
            if (qxmath::Abs(work[row][column]) > qxmath::Abs(work[pivot][column]))
                pivot = row;
        const double value = work[pivot][column];
        m_determinant *= pivot == column ? value : -value;
        if (value == 0) {
            m_inverse = {};
            return false;
        }
        for (int j = 0; j < 8; ++j) {
            const double held = work[pivot][j];
            work[pivot][j] = work[column][j];
            work[column][j] = held;
            work[column][j] /= value;
        }
        for (int row = 0; row < 4; ++row) {
            const double factor = row == column ? 0 : work[row][column];
            for (int j = 0; j < 8; ++j)
                work[row][j] -= factor * work[column][j];
        }
        return true;
    }

    QxMatrix44 m_inverse;
    double m_determinant = 1;
};

inline QxMatrix44 QxInverse(const QxMatrix44& matrix)
{
    return QxInversion(matrix).Inverse();
}

inline float QxDeterminant(const QxMatrix44& matrix)
{
    return QxInversion(matrix).Determinant();
}

/// Returns a times the inverse of b.
inline QxMatrix44 operator/(const QxMatrix44& a, const QxMatrix44& b)
{
    return a * QxInverse(b);
}

inline QxMatrix44 operator/(const QxMatrix44& a, float divisor)
{
    return a * (1 / divisor);
}

/// The number is treated as a diagonal matrix.
inline QxMatrix44 operator/(float l, const QxMatrix44& r)
{
    return QxInverse(r) * l;
}

// The new transform is applied first: points are moved, rotated or scaled, and then transformed by
// `matrix`.

inline QxMatrix44 QxTranslate(const QxMatrix44& matrix, const QxVector3& by)
{
    QxMatrix44 step = QxMatrix44::Identity();
    step[3][0] = by.x;
    step[3][1] = by.y;
    step[3][2] = by.z;
    return step * matrix;
}

inline QxMatrix44 QxScale(const QxMatrix44& matrix, const QxVector3& by)
{
    QxMatrix44 step = QxMatrix44::Identity();
    step[0][0] = by.x;
    step[1][1] = by.y;
    step[2][2] = by.z;
    return step * matrix;
}

/// The angle is in radians; the axis goes through the origin.
inline QxMatrix44 QxRotate(const QxMatrix44& matrix, float angle, const QxVector3& axis)
{
    const QxVector3 units[3] = {{1, 0, 0}, {0, 1, 0}, {0, 0, 1}};
    QxMatrix44 step = QxMatrix44::Identity();
    for (int i = 0; i < 3; ++i) {
        const QxVector3 image = QxRotatePoint(units[i], angle, {0, 0, 0}, axis);
        for (int j = 0; j < 3; ++j)
            step[i][j] = image[j];
    }
    return step * matrix;
}

/// Ignores the translation, since a direction has no position.
inline QxVector3 QxTransformVector(const QxVector3& v, const QxMatrix44& m)
{
    return {v.x * m[0][0] + v.y * m[1][0] + v.z * m[2][0],
            v.x * m[0][1] + v.y * m[1][1] + v.z * m[2][1],
            v.x * m[0][2] + v.y * m[1][2] + v.z * m[2][2]};
}

/// Divides by the fourth coordinate unless it is 0, so that perspective matrices work.
inline QxVector3 QxTransformPoint(const QxVector3& p, const QxMatrix44& m)
{
    const QxVector3 q = QxTransformVector(p, m) + QxVector3{m[3][0], m[3][1], m[3][2]};
    const float w = p.x * m[0][3] + p.y * m[1][3] + p.z * m[2][3] + m[3][3];
    return w == 1 || w == 0 ? q : q * (1 / w);
}

/// `inverse` is the inverse of the matrix that transforms points. Normals are transformed by the
/// transpose of `inverse`, which keeps them perpendicular to the surface.
inline QxVector3 QxTransformNormal(const QxVector3& n, const QxMatrix44& inverse)
{
    return {n.x * inverse[0][0] + n.y * inverse[0][1] + n.z * inverse[0][2],
            n.x * inverse[1][0] + n.y * inverse[1][1] + n.z * inverse[1][2],
            n.x * inverse[2][0] + n.y * inverse[2][1] + n.z * inverse[2][2]};
}
