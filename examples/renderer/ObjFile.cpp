// A corner of a face in an OBJ file has a number each for its place, its texture place and its
// normal; in a mesh it has one number for all three. So each combination becomes a corner.

#include "ObjFile.h"

#include <fstream>
#include <map>
#include <sstream>
#include <stdexcept>

#include "QxMatrixMath.h"

namespace {

class ObjReader {
public:
    explicit ObjReader(const QxMatrix44& toWorld) : m_toWorld(toWorld) {}

    /// False for a line that is damaged.
    [[nodiscard]] bool ReadLine(const std::string& line);
    [[nodiscard]] Mesh Take();

private:
    using Corner = std::array<std::size_t, 3>;  // counted from 1; 0 for none

    [[nodiscard]] bool ReadFace(std::istream& words);
    [[nodiscard]] bool ReadCorner(const std::string& word, Corner& corner) const;

    QxMatrix44 m_toWorld;
    QxMatrix44 m_fromWorld = QxInverse(m_toWorld);
    std::array<std::vector<QxVector3>, 3> m_values;  // places, texture places, normals
    std::map<Corner, unsigned int> m_corners;
    Mesh m_mesh;
};

bool ObjReader::ReadLine(const std::string& line)
{
    std::istringstream words(line.substr(0, line.find('#')));
    std::string word;
    words >> word;
    if (word == "f")
        return ReadFace(words);
    if (word != "v" && word != "vt" && word != "vn")
        return true;
    QxVector3 value = {};
    words >> value.x >> value.y;
    if (word != "vt")
        words >> value.z;
    if (word == "v")
        m_values[0].push_back(QxTransformPoint(value, m_toWorld));
    else if (word == "vt")
        m_values[1].push_back({value.x, 1 - value.y, 0});  // pictures begin with the upper row
    else
        m_values[2].push_back(QxTransformNormal(value, m_fromWorld));
    return !words.fail();
}

bool ObjReader::ReadFace(std::istream& words)
{
    std::vector<unsigned int> face;
    for (std::string word; words >> word;) {
        Corner corner = {};
        if (!ReadCorner(word, corner))
            return false;
        face.push_back(m_corners.try_emplace(corner, m_corners.size()).first->second);
    }
    for (std::size_t i = 2; i < face.size(); ++i)
        m_mesh.triangles.push_back({face[0], face[i - 1], face[i]});
    return face.size() > 2;
}

/// Such as "7", "7/3", "7//2" or "7/3/2"; numbers below 0 count back from the last one.
bool ObjReader::ReadCorner(const std::string& word, Corner& corner) const
{
    std::istringstream parts(word);
    std::size_t kind = 0;
    for (std::string part; std::getline(parts, part, '/'); ++kind) {
        if (kind > 2)
            return false;
        const auto count = static_cast<long>(m_values[kind].size());
        char* end = nullptr;
        const long number = std::strtol(part.c_str(), &end, 10);
        const long counted = number < 0 ? number + count + 1 : number;
        if (*end || counted < (part.empty() ? 0 : 1) || counted > count)
            return false;
        corner[kind] = static_cast<std::size_t>(counted);
    }
    return corner[0] != 0;
}

Mesh ObjReader::Take()
{
    m_mesh.P.resize(m_corners.size());
    m_mesh.st.resize(m_corners.size());
    m_mesh.N.resize(m_corners.size());
    bool hasNormals = true;
    for (const auto& [corner, number] : m_corners) {
        const auto [place, texture, normal] = corner;
        m_mesh.P[number] = m_values[0][place - 1];
        if (texture)
            m_mesh.st[number] = {m_values[1][texture - 1].x, m_values[1][texture - 1].y};
        if (normal)
            m_mesh.N[number] = m_values[2][normal - 1];
        hasNormals = hasNormals && normal;
    }
    if (!hasNormals)
        m_mesh.N.clear();
    return std::move(m_mesh);
}

}  // namespace

Mesh ReadObjFile(const std::string& path, const QxMatrix44& toWorld)
{
    std::ifstream file(path);
    if (!file)
        throw std::runtime_error("Cannot read '" + path + "'");
    ObjReader reader(toWorld);
    int number = 0;
    for (std::string line; std::getline(file, line);) {
        ++number;
        if (!reader.ReadLine(line))
            throw std::runtime_error(path + ":" + std::to_string(number) + ": Damaged line");
    }
    Mesh mesh = reader.Take();
    if (mesh.triangles.empty())
        throw std::runtime_error("There are no faces in '" + path + "'");
    return mesh;
}
