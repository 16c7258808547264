#pragma once

#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "QxShaderSupport.h"
#include "host/QxHostGrid.h"
#include "host/QxHostSpaces.h"

class QxShaderInstance;

/// What shaders of a host share: coordinate spaces, lights, and answers to their questions. What
/// else needs a scene gets the neutral answer; a host that knows better derives from this.
///
/// While shaders run, a scene belongs to one thread: it keeps what it knows of the grid at hand,
/// and runs light shaders on grids of its own. Threads need scenes of their own.
class QxHostScene : public QxShaderSupport {
public:
    /// Spaces by name. The current one is that of the grids; a name that is not defined means it.
    [[nodiscard]] QxHostSpaces& Spaces() { return m_spaces; }

    // Lights. Places and directions are in the current space. They may be added between two grids;
    // none is ever removed.

    /// From everywhere alike; several add up.
    void AddAmbientLight(const QxRGBColor& color);
    /// As bright at any distance.
    void AddPointLight(const QxVector3& position, const QxRGBColor& color);
    /// `direction`: the way that the light goes.
    void AddDistantLight(const QxVector3& direction, const QxRGBColor& color);
    /// A light shader, which must outlive the scene and stands where its "shader" space does. One
    /// without `illuminate` and `solar` is ambient: to find out, it is run once. Throws
    /// `QxHostError` if it is no light shader.
    void AddLight(QxShaderInstance& light);
    /// Without the ambient ones.
    [[nodiscard]] unsigned int LightCount() const;

    /// What a message such as `attribute("name", ...)` finds under the name. A value of another
    /// type or length than the shader asks for is no answer. The last one set counts.
    void SetAnswer(QxMessage message, const std::string& name, const QxHostValue& value);

    /// The points that are about to be shaded: lights are run on grids of their layout, and see
    /// their eye and time. `QxShaderInstance::Run` calls it when it is handed a scene.
    void BeginGrid(const QxHostPoints& points);

    // What shaders ask, see `QxShaderSupport`. Each throws `QxHostError` if a light shader cannot
    // be run.

    /// Fills the values of all lights but the ambient ones, in the order in which they were added.
    void EvaluateLights(const QxVector3* positions, unsigned int points, QxLightInput* lights,
                        unsigned int count) override;
    /// The sum of the ambient lights at a place.
    QxRGBColor Ambient(const QxVector3& position) override;
    void AmbientOverGrid(const QxVector3* positions, unsigned int points,
                         QxRGBColor* results) override;
    /// True if there is an answer, which then stands in `value`.
    bool Message(QxMessage message, const char* texture, const char* name,
                 const QxMessageValue& value) override;

private:
    struct Light {
        QxVector3 place = {0, 0, 0};  // or the direction
        bool distant = false;
        QxRGBColor color = {0, 0, 0};
        QxShaderInstance* shader = nullptr;  // in place of all others
    };

    void Shade(QxShaderInstance& light, QxHostGrid& grid, const QxVector3* positions);
    void TakeShaded(const QxLightInput& light);

    QxHostSpaces m_spaces;
    std::vector<Light> m_lights;
    std::map<std::pair<QxMessage, std::string>, QxHostValue> m_answers;

    QxRGBColor m_ambientColor = {0, 0, 0};
    std::vector<QxShaderInstance*> m_ambientShaders;
    QxRGBColor m_steadyAmbient = {0, 0, 0};         // of all that is alike at all points
    std::vector<QxShaderInstance*> m_placeAmbient;  // the other ones

    float m_time = 0;
    QxVector3 m_eye = {0, 0, 0};
    std::optional<QxHostGrid> m_lightGrid;    // as large as the grid at hand
    std::optional<QxHostGrid> m_ambientGrid;  // of one point
};
