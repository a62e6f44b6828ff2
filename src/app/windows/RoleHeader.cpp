#include "app/windows/RoleHeader.h"

#include "app/windows/Controls.h"
#include "app/windows/ImportWords.h"

#include <QEvent>
#include <QScrollBar>
#include <QWheelEvent>

using terravo::ColumnRole;
using terravo::Text;

RoleHeader::RoleHeader(const terravo::RunState& state, QWidget* parent)
    : QHeaderView(Qt::Horizontal, parent), state_(state) {
    setSectionsClickable(false);
    setHighlightSections(false);
    setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    connect(this, &QHeaderView::sectionResized, this, [this] { PlaceBoxes(); });
}

QComboBox* RoleHeader::MakeBox(int column) {
    auto* box = new QComboBox(viewport());
    box->setObjectName(QStringLiteral("cmbColumn%1").arg(column + 1));
    box->setAccessibleName(Caption(state_, Text::ImportColumn).arg(column + 1));
    for (const ColumnRole role : {ColumnRole::Ignored, ColumnRole::Name, ColumnRole::Easting,
                                  ColumnRole::Northing, ColumnRole::Height, ColumnRole::Code}) {
        box->addItem(RoleWord(state_, role));
    }
    box->setFocusPolicy(Qt::StrongFocus);
    box->installEventFilter(this);
    connect(box, &QComboBox::activated, this,
            [this, column](int role) { emit RoleChosen(column, static_cast<ColumnRole>(role)); });
    return box;
}

void RoleHeader::Show(const std::vector<ColumnRole>& roles) {
    while (boxes_.size() > roles.size()) {
        boxes_.back()->deleteLater();
        boxes_.back()->hide();
        boxes_.pop_back();
    }
    while (boxes_.size() < roles.size()) {
        boxes_.push_back(MakeBox(static_cast<int>(boxes_.size())));
        boxes_.back()->show();
    }
    for (std::size_t k = 0; k < roles.size(); ++k) {
        boxes_[k]->setCurrentIndex(static_cast<int>(roles[k]));
    }
    PlaceBoxes();
}

// A role is not to change because somebody scrolls the table.
bool RoleHeader::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Wheel) {
        event->ignore();
        return true;
    }
    if (event->type() == QEvent::FocusIn) {
        const auto found = std::find(boxes_.begin(), boxes_.end(), watched);
        emit ColumnEntered(static_cast<int>(found - boxes_.begin()));
    }
    return QHeaderView::eventFilter(watched, event);
}

QSize RoleHeader::sizeHint() const {
    QSize size = QHeaderView::sizeHint();
    const int height = boxes_.empty() ? 0 : boxes_.front()->sizeHint().height() + 2;
    size.setHeight(std::max(size.height(), height));
    return size;
}

QSize RoleHeader::sectionSizeFromContents(int section) const {
    const QSize size = QHeaderView::sectionSizeFromContents(section);
    const bool hasBox = section > 0 && static_cast<std::size_t>(section) <= boxes_.size();
    return hasBox ? size.expandedTo(boxes_[static_cast<std::size_t>(section) - 1]->sizeHint())
                  : size;
}

void RoleHeader::updateGeometries() {
    QHeaderView::updateGeometries();
    PlaceBoxes();
}

void RoleHeader::PlaceBoxes() {
    for (std::size_t k = 0; k < boxes_.size(); ++k) {
        const int section = static_cast<int>(k) + 1;
        boxes_[k]->setVisible(section < count());
        if (section < count()) {
            boxes_[k]->setGeometry(sectionViewportPosition(section), 0, sectionSize(section),
                                   viewport()->height());
        }
    }
}
