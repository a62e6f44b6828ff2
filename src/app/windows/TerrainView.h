// A terrain under the hand: turned, moved, brought nearer.
//
// Data: what is drawn, the plan, the camera. Method: while the hand moves it a large terrain is
// drawn coarsely; at rest all of it, and a small one once more at twice the size, as a file has it.
// What lies under the pointer is asked of whoever knows the survey.
#pragma once

#include "util/RunState.h"
#include "view3d/gl/TerrainRenderer.h"

#include <QImage>
#include <QOpenGLWidget>
#include <QTimer>

#include <functional>
#include <memory>
#include <optional>

class TerrainView : public QOpenGLWidget {
    Q_OBJECT

public:
    explicit TerrainView(const terravo::RunState& state, QWidget* parent = nullptr);
    TerrainView(const TerrainView&) = delete;
    TerrainView& operator=(const TerrainView&) = delete;
    ~TerrainView() override;

    /// Whether there is an OpenGL that can draw a terrain; looked for once.
    static bool IsPossible();

    /// Another terrain, or none.
    /// @param keepsCamera  it is the one before, changed.
    void Show(std::shared_ptr<const terravo::TerrainContent> content, bool keepsCamera);
    [[nodiscard]] const terravo::TerrainContent* Content() const { return content_.get(); }

    [[nodiscard]] const terravo::TerrainPlan& Plan() const { return plan_; }
    void SetPlan(const terravo::TerrainPlan& plan);
    [[nodiscard]] const terravo::TerrainCamera& Camera() const { return camera_; }
    /// The whole terrain, seen in a direction; it stays whole while the window changes its size.
    void LookFrom(double azimuth, double elevation);
    void LookFrom(terravo::TerrainSide side);
    /// The whole terrain with heights stretched otherwise.
    void SetFactor(double factor);
    /// Changes the camera and draws again.
    void Change(const std::function<void(terravo::TerrainCamera& camera)>& change);
    /// A place that is marked, data units, or none.
    void SetMark(std::optional<terravo::SpacePoint> place);

    /// The sides of the triangles, asked for when they are first to be drawn.
    std::function<std::vector<std::uint32_t>()> sides;
    /// The place of the ground at a pixel, relative to the middle; nothing beside it.
    std::function<std::optional<terravo::SpacePoint>(double x, double y)> groundAt;

    /// The picture as a file has it; null where the graphics cannot draw it.
    [[nodiscard]] QImage Picture(int width, int height);
    /// How long the last picture took, milliseconds.
    [[nodiscard]] double LastPictureTook() const { return tookMilliseconds_; }
    [[nodiscard]] bool IsMoving() const { return isMoving_; }

    [[nodiscard]] QSize sizeHint() const override { return {560, 420}; }
    [[nodiscard]] QSize minimumSizeHint() const override { return {120, 90}; }

signals:
    /// The pointer rests over a place, or has left.
    void Hovered(double x, double y);
    void PointerLeft();
    /// A click without a drag.
    void Clicked(double x, double y);
    void CameraMoved();

protected:
    void initializeGL() override;
    void paintGL() override;
    void resizeGL(int width, int height) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void leaveEvent(QEvent* event) override;

private:
    void ForgetRefined();
    void Moves();
    void ComeToRest();
    void Load();
    void Zoom(QPointF around, double factor);
    bool TakeKey(int key);
    [[nodiscard]] terravo::TerrainShot ViewOf(const terravo::TerrainCamera& camera, int width,
                                              int height, double ratio) const;

    const terravo::RunState& state_;
    std::shared_ptr<const terravo::TerrainContent> content_;
    bool isLoaded_ = false;
    terravo::TerrainPlan plan_;
    terravo::TerrainCamera camera_;
    std::optional<terravo::SpacePoint> mark_; // data units
    std::unique_ptr<terravo::TerrainRenderer> renderer_;
    QString trouble_;
    QImage refined_;
    QTimer rest_;
    QTimer hover_;
    bool isFitted_ = true; // until the user looks closer
    bool isMoving_ = false;
    double tookMilliseconds_ = 0;
    struct Drag {
        QPointF from;
        QPointF last;
        bool pans = false;
        bool hasMoved = false;
    };
    std::optional<Drag> drag_;
};
