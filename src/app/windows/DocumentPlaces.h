// Where the documents of the parent are, and where they are to be the next time.
//
// Data: for each frame the box that it should have, in coordinates that do not change while the
// area is scrolled, and how far its user, of this run or of an earlier one, has chosen it. Method:
// a frame is shown at that box, or as near to it as the room allows; only what the user does
// changes the box. So a small or minimised parent leaves no trace in what is kept.
#pragma once

#include <QMdiArea>
#include <QMdiSubWindow>
#include <QPointer>
#include <QRect>
#include <QTimer>

#include <optional>
#include <vector>

/// A box, and whether its user knows its place and its size from before.
struct DocumentBox {
    QRect box;
    bool isPlaceChosen = false;
    bool isSizeChosen = false;
};

/// What a document beside the map is called in the settings, and how large it should be.
struct DocumentKind {
    const char* name;
    QSize designed;
    QSize useful;               // less is no use beside the map
    bool isAtRightEdge = false; // over the map where there is no room beside it
};

/// What a document shows of its box in a room at (0, 0): a chosen size as it is, another one no
/// larger than the room while that is of use; a chosen place as it is while the title can be
/// reached, another one moved inside as far as it fits.
QRect ShownBox(const DocumentBox& wanted, QSize room, int titleHeight);

/// The largest box up to a size, at least the least, in what a document leaves free on one of its
/// four sides; none where it does not fit.
std::optional<QRect> BoxBeside(const QRect& document, QSize room, QSize size, QSize least);

/// The boxes of so many documents side by side, which together fill the room; and one behind the
/// other, each a step on, so that every title is seen.
std::vector<QRect> TiledBoxes(int count, QSize room);
std::vector<QRect> CascadedBoxes(int count, QSize room, int step);

class DocumentPlaces : public QObject {
    Q_OBJECT

public:
    explicit DocumentPlaces(QMdiArea& area);

    /// Places a new frame and follows it from now on.
    void Add(QMdiSubWindow* frame, const DocumentBox& wanted);

    /// Another box for a frame that its user has not placed.
    void Replace(const QMdiSubWindow* frame, const QRect& box);

    [[nodiscard]] DocumentBox Wanted(const QMdiSubWindow* frame) const;

    /// The box to be kept for the next run; none for a minimised frame, and for one in a place that
    /// nobody chose and nobody has seen.
    [[nodiscard]] std::optional<QRect> ToKeep(const QMdiSubWindow* frame) const;

    /// Puts the documents side by side, or one behind the other with the foremost in front. Icons
    /// stay icons.
    void Tile();
    void Cascade();

    [[nodiscard]] QSize Room() const { return area_.viewport()->size(); }

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    struct Document {
        QPointer<QMdiSubWindow> frame;
        DocumentBox wanted;
        QRect shown; // as it was placed last
        bool isSeen = false;
    };

    [[nodiscard]] const Document* Find(const QMdiSubWindow* frame) const;
    void Settle();
    void Place(Document& document);
    void Follow(Document& document) const;
    [[nodiscard]] QPoint Scrolled() const;
    [[nodiscard]] int TitleHeight() const;
    [[nodiscard]] QList<QMdiSubWindow*> Arrangeable(QMdiArea::WindowOrder order) const;
    void Arrange(const QList<QMdiSubWindow*>& frames, const std::vector<QRect>& boxes) const;

    QMdiArea& area_;
    std::vector<Document> documents_;
    QTimer settle_;
    bool isPlacing_ = false;
};
