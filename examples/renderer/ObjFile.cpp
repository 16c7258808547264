// Each corner of a face becomes a corner of the mesh, also where faces share it: an OBJ file may
// give it another normal or texture place in each of them.

#include "ObjFile.h"

#include <fstream>
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
    [[nodiscard]] bool ReadCorner(const std::string& word);

    QxMatrix44 m_toWorld;
    QxMatrix44 m_fromWorld = QxInverse(m_toWorld);
    std::array<std::vector<QxVector3>, 3> m_values;  // places, texture places, normals
    bool m_lacksNormals = false;
    Mesh m_mesh;
};

bool ObjReader::ReadLine(const std::string& line)
{
    std::istringstream words(line.substr(0, line.find('#')));
    std::string word;
    QxVector3 value = {};
    words >> word;
    if (word == "v" && words >> value.x >> value.y >> value.z)
        m_values[0].push_back(QxTransformPoint(value, m_toWorld));
    else if (word == "vt" && words >> value.x >> value.y)
        m_values[1].push_back({value.x, 1 - value.y, 0});  // pictures begin with the upper row
    else if (word == "vn" && words >> value.x >> value.y >> value.z)
        m_values[2].push_back(QxTransformNormal(value, m_fromWorld));
    else if (word != "f")
        return word != "v" && word != "vt" && word != "vn";
    else {
        const auto first = static_cast<unsigned int>(m_mesh.P.size());
        while (words >> word)
            if (!ReadCorner(word))
                return false;
        for (unsigned int corner = first + 2; corner < m_mesh.P.size(); ++corner)
            m_mesh.triangles.push_back({first, corner - 1, corner});
    }
    return true;
}

/// Such as "7", "7/3", "7//2" or "7/3/2"; numbers below 0 count back from the last one.
bool ObjReader::ReadCorner(const std::string& word)
{
    const QxVector3* found[3] = {};
    std::istringstream parts(word);
    std::string part;
    for (int kind = 0; kind < 3 && std::getline(parts, part, '/'); ++kind) {
        if (part.empty())
            continue;
        char* end = nullptr;
        const long number = std::strtol(part.c_str(), &end, 10);
        const auto count = static_cast<long>(m_values[kind].size());
        const long place = number < 0 ? number + count : number - 1;
        if (*end || place < 0 || place >= count)
            return false;
        found[kind] = &m_values[kind][place];
    }
    if (!found[0])
        return false;
    m_mesh.P.push_back(*found[0]);
    m_mesh.st.push_back(found[1] ? std::array{found[1]->x, found[1]->y} : std::array{0.0F, 0.0F});
    m_mesh.N.push_back(found[2] ? *found[2] : QxVector3{});
    m_lacksNormals = m_lacksNormals || !found[2];
    return true;
}

Mesh ObjReader::Take()
{
    if (m_lacksNormals)
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
