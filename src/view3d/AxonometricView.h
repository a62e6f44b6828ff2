// An axonometric view: what it shows, how the user looks at it, and its last drawing.
//
// Data: the data, which copies of a view share since nothing changes them; the parameters, which
// outlive them; the last drawing. Method: a redraw reads the first two and replaces the third; the
// pointer and a drag of the y axis are understood through it.
#pragma once

#include "view3d/NearestPoint.h"
#include "view3d/Rendering.h"
#include "view3d/ViewData.h"
#include "view3d/ViewParameters.h"

#include <memory>
#include <optional>

namespace terravo {

class AxonometricView {
public:
    /// Shows other data from the next redraw on.
    void Show(ViewData data);
    void Show(std::shared_ptr<const ViewData> data);
    [[nodiscard]] bool HasData() const { return hasData_; }
    [[nodiscard]] const ViewData& Data() const { return *data_; }

    [[nodiscard]] const ViewParameters& Parameters() const { return parameters_; }
    void SetParameters(const ViewParameters& parameters) { parameters_ = parameters; }

    /// Length and slant of the y axis for a standard view.
    /// @param outerHeight  of the drawing area, pixels.
    void SetStandardView(StandardView view, int outerHeight);

    /// A drag of the y axis begins: from now on drawings keep the origin and the x axis of the last
    /// one, so that the end of the y axis comes to lie under the pointer.
    void HoldAxes();
    /// The drag has ended: drawings fit the surface again.
    void ReleaseAxes() { parameters_.held.reset(); }
    /// The end of the y axis is dragged to a place in the drawing area's user units.
    void DragAxisEnd(double userX, double userZ);
    /// The place that lies some pixels to the right of and above the end of the y axis.
    [[nodiscard]] UserPosition NearAxisEnd(double right, double up) const;

    /// Draws the whole picture. The length of the y axis is capped as the frame caps it.
    /// @param full  also renews what follows from the frame (sines, centre, slant): after new data,
    ///              another view or a drag. A turn or another colour keeps it, unless the surface
    ///              has another size than that of the last drawing, or that one failed.
    /// @return what to tell the user when the frame failed; there are no marks then.
    std::optional<Message> Redraw(DrawSurface& surface, bool full, const RunState& run);

    /// The last drawing that was complete.
    [[nodiscard]] const Drawing3D& Drawing() const { return drawing_; }
    [[nodiscard]] bool IsDrawn() const { return isDrawn_; }

    /// The point or node nearest to a pixel; nothing unless the last drawing reached the marks.
    [[nodiscard]] std::optional<NearestPoint> FindNearest(PixelPoint pixel) const;

private:
    struct SurfaceSize {
        int width = 0;
        int height = 0;
        bool operator==(const SurfaceSize&) const = default;
    };

    [[nodiscard]] float LengthSeenFromAbove(int outerHeight) const;

    std::shared_ptr<const ViewData> data_ = std::make_shared<const ViewData>();
    bool hasData_ = false;
    ViewParameters parameters_;
    Drawing3D drawing_;
    bool isDrawn_ = false;                  // the last drawing reached the marks
    std::optional<SurfaceSize> measuredOn_; // of the last drawing, unless it failed
};

} // namespace terravo
