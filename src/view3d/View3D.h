// The commands of the 3D window, without the window.
//
// Data: the axonometric view, what it can show otherwise, and the state of its rotation. Method:
// each control's event is one operation, which changes the view, draws, shows the message of a
// drawing that failed, and tells the display what its controls show; the timer, the pointer and the
// labels are the display's.
//
//   idle      --Rotate-->  rotating  --Pause-->     paused
//   rotating  --Rotate-->  idle      paused --Pause--> rotating
#pragma once

#include "survey/PointSet.h"
#include "triangulation/SpaceLine.h"
#include "util/RunState.h"
#include "util/Services.h"
#include "view3d/AxonometricView.h"

#include <memory>
#include <optional>
#include <string>

namespace terravo {

/// What the controls show.
struct View3DControls {
    std::string rotateCaption;
    bool rotateEnabled = true;
    std::string pauseCaption;
    bool pauseEnabled = false;
    bool stepUsable = false; // the up-down of the angle
    bool timerOn = false;
    int thetaDegrees = 0; // of the up-down
    std::string theta;    // degrees, for lblTheta
    std::string rayx;
    std::string alfa; // degrees
    ViewMode kind = ViewMode::Triangles;
    bool canShowPoints = false;
    bool canShowSurface = false;
    bool canShowTriangles = false;
};

/// The texts of the read-out.
struct View3DReadOut {
    std::string x;
    std::string y;
    std::string z;
    std::string label; // name and code of the point; empty where it has none
    PixelPoint pixel;  // of the indicator's middle
};

class View3DDisplay {
public:
    virtual ~View3DDisplay() = default;
    /// The drawing area, at its present size.
    virtual DrawSurface& Surface3D() = 0;
    /// True: nobody sees a picture, so none is drawn.
    [[nodiscard]] virtual bool IsMinimised() const = 0;
    /// Outer height of the drawing area, pixels.
    [[nodiscard]] virtual int OuterHeight() const = 0;
    /// Pixel under the pointer; nothing unless the drawing area itself is under it.
    [[nodiscard]] virtual std::optional<PixelPoint> PointerPixel() const = 0;
    virtual void ShowControls(const View3DControls& controls) = 0;
    /// Shows the read-out and the indicator, or hides both.
    virtual void ShowReadOut(const std::optional<View3DReadOut>& readOut) = 0;
    /// Shows where the marked place falls on the picture, or that there is none.
    virtual void ShowMark(const std::optional<PixelPosition>& pixel) = 0;
};

class View3D {
public:
    View3D(const RunState& run, MessageService& messages, View3DDisplay& display);

    [[nodiscard]] const AxonometricView& View() const { return view_; }
    [[nodiscard]] bool IsPaused() const { return paused_; }

    // Entries; see ViewData. The data appear as the kind of picture that was chosen last, triangles
    // at first, or as they are where that cannot be.
    void Triangoli(Array1<double> x, Array1<double> y, Array1<double> z, Table<Index> corners,
                   const std::string& title, const SpaceExtents* extents = nullptr);
    void Punti(Array1<double> x, Array1<double> y, Array1<double> z, const std::string& title,
               const SpaceExtents* extents = nullptr);
    void Superficie(Array1<double> x, Array1<double> y, Table<double> z, const std::string& title);

    /// The same for the triangles of a point set.
    void ShowTriangles(const PointSet& points, const TriangleList& triangles,
                       const std::string& title);

    /// Starts the rotation at 0 degrees, or stops it.
    void ToggleRotation();
    /// One degree on.
    void Tick();
    void TogglePause();
    /// The up-down has moved to a number of degrees, -1 to 360; both ends wrap.
    void StepAngle(int degrees);
    void SetColour(bool colour);
    /// The kind of picture for these data and the next, as far as they can be shown so.
    void SetKind(ViewMode kind);
    [[nodiscard]] bool CanShow(ViewMode kind) const;
    /// The initial view is also at rest.
    void SetStandardView(StandardView view);

    /// The left button goes down, the pointer moves with it, it goes up. While it is down the end
    /// of the y axis stays under the pointer; then the picture fits the drawing area again.
    void BeginDrag();
    void Drag(double userX, double userZ);
    void EndDrag();
    /// The end of the y axis, taken some pixels on from where it is, as the pointer would drag it.
    void MoveAxisEnd(double right, double up);
    /// The pointer moved without a button, or the data are new: reads out the nearest point. Ends a
    /// drag whose end went elsewhere.
    void PlaceAxisLabels();
    /// The pointer has left the drawing area.
    void LeaveArea();

    /// Draws again, as after a change of the size. A drawing that fails stops the rotation, so that
    /// its message does not come back with every tick. In a minimised window the picture is owed.
    void Redraw(bool full);
    [[nodiscard]] bool OwesPicture() const { return owesPicture_; }
    /// Draws the picture that was owed, unless the window is still minimised.
    void CatchUp();

    /// Marks a place of the data, until another is given or none.
    void SetMark(const std::optional<SpacePoint>& place);

    /// Refreshes captions after the texts were loaded.
    void ShowControls();

private:
    void Show(ViewData data);
    void ShowKind();
    [[nodiscard]] std::shared_ptr<const ViewData> DataAs(ViewMode kind) const;
    void Rest();
    void TurnTo(float theta, bool rotating);
    void PutAxisEnd(UserPosition place);
    void ShowMark();
    void Report(const Message& failure);

    const RunState& run_;
    MessageService& messages_;
    View3DDisplay& display_;
    AxonometricView view_;
    std::shared_ptr<const ViewData> source_; // as they were handed over
    PointLabels labels_;                     // of its points
    bool isGrid_ = false;
    std::optional<SpacePoint> mark_;
    ViewMode wanted_ = ViewMode::Triangles;
    bool paused_ = false;
    bool owesPicture_ = false;
    bool owesFull_ = false;  // the picture owed measures the frame anew
    bool dragged_ = false;   // since the button went down
    bool reporting_ = false; // a message is on the screen
};

} // namespace terravo
