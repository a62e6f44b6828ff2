// The 3D window: the axonometric picture and its controls, thin above a View3D.
#pragma once

#include "app/settings/ColourScheme.h"
#include "export/PictureExport.h"
#include "view3d/View3D.h"

#include <QAction>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QRadioButton>
#include <QSpinBox>
#include <QTimer>
#include <QWidget>

class GradientButton;
class QBoxLayout;
class SurfaceView;

class frm3D : public QWidget, public terravo::View3DDisplay {
    Q_OBJECT

public:
    frm3D(const terravo::RunState& state, terravo::MessageService& messages,
          const terravo::ColourScheme& scheme);

    /// The commands of this window, and its entries Triangoli, Punti and Superficie.
    [[nodiscard]] terravo::View3D& Commands() { return commands_; }

    /// Shows or hides the picture.
    void SetPictureVisible(bool visible);

    /// The picture as it is now, to be drawn on other surfaces. It outlives the window.
    [[nodiscard]] terravo::Picture PictureNow() const;

    // terravo::View3DDisplay
    terravo::DrawSurface& Surface3D() override;
    [[nodiscard]] bool IsMinimised() const override;
    [[nodiscard]] int OuterHeight() const override;
    [[nodiscard]] std::optional<terravo::PixelPoint> PointerPixel() const override;
    void ShowControls(const terravo::View3DControls& controls) override;
    void ShowReadOut(const std::optional<terravo::View3DReadOut>& readOut) override;
    void ShowMark(const std::optional<terravo::PixelPosition>& pixel) override;

signals:
    /// The window closes; its place is to be kept.
    void Closing();
    /// The picture is to be written as a file, or printed.
    void ExportAsked();
    void PrintAsked();
    /// The picture is on the clipboard.
    void Copied();

protected:
    void closeEvent(QCloseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void MakeControls();
    QBoxLayout* MakeMarks();
    QGroupBox* MakeViews();
    QGroupBox* MakeRotation();
    QBoxLayout* MakeReadOut();
    void ConnectControls();
    void SetColours(const terravo::ColourScheme& scheme);
    void CopyPicture();
    void MakePictureMenu();
    bool MoveAxisEnd(int key);
    void ShowKinds(const terravo::View3DControls& controls);

    const terravo::RunState& state_;
    terravo::MessageService& messages_;
    terravo::View3D commands_;
    SurfaceView* pic3D = nullptr;
    QWidget* Picture1 = nullptr;
    QRadioButton* optCol = nullptr;
    QRadioButton* optBN = nullptr;
    QComboBox* cmbKind = nullptr;
    QGroupBox* zFrame1 = nullptr;
    QGroupBox* zFrame2 = nullptr;
    GradientButton* cmdXY = nullptr;
    GradientButton* cmdZX = nullptr;
    GradientButton* cmdZY = nullptr;
    GradientButton* cmdInitial = nullptr;
    GradientButton* cmdRuota = nullptr;
    GradientButton* cmdPausa = nullptr;
    GradientButton* cmdCopiaGrafico = nullptr;
    QSpinBox* updTheta = nullptr;
    QLabel* lblTheta = nullptr;
    QLabel* lblRAyx = nullptr;
    QLabel* lblAlfa = nullptr;
    QLabel* lblX = nullptr;
    QLabel* lblY = nullptr;
    QLabel* lblZ = nullptr;
    QLabel* lblName = nullptr;
    QLabel* lblIstruzioni = nullptr;
    QWidget* shpInd = nullptr;
    QWidget* focusRing = nullptr;
    QAction* mnuExport3D = nullptr; // of the picture's own menu
    QAction* mnuPrint3D = nullptr;
    QTimer Timer1;
};
