#include "app/windows/LinesDialog.h"

#include "app/windows/Controls.h"
#include "survey/surface/CodeLines.h"
#include "util/NumberText.h"

#include <QBoxLayout>
#include <QDialogButtonBox>
#include <QFileInfo>
#include <QHeaderView>
#include <QShortcut>

#include <algorithm>
#include <functional>

using terravo::Index;
using terravo::LineRole;
using terravo::SharedLine;
using terravo::Text;

namespace {

std::vector<SharedLine>& ListOf(terravo::SurfacePlan& plan, LineRole role) {
    return role == LineRole::Breakline  ? plan.breaklines
           : role == LineRole::Boundary ? plan.boundary
                                        : plan.holes;
}

} // namespace

LinesDialog::LinesDialog(const terravo::RunState& state, const terravo::Survey& survey,
                         QWidget* parent)
    : QDialog(parent), state_(state), survey_(survey), plan_(survey.Plan()),
      lstLines(Named(new QTreeWidget(this), "lstLines")),
      cmdRemove(Named(new QPushButton(Caption(state, Text::LinesRemove), this), "cmdRemove")) {
    setObjectName(QStringLiteral("LinesDialog"));
    setWindowTitle(Caption(state_, Text::LinesTitle));
    lstLines->setHeaderLabels({Caption(state_, Text::LinesKind), Caption(state_, Text::LinesName),
                               Caption(state_, Text::LinesSource),
                               Caption(state_, Text::LinesVertices)});
    lstLines->setRootIsDecorated(false);
    lstLines->setSelectionMode(QAbstractItemView::ExtendedSelection);
    lstLines->setAccessibleName(windowTitle());
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    cmdOk = Named(buttons->button(QDialogButtonBox::Ok), "cmdOk");
    buttons->button(QDialogButtonBox::Cancel)->setText(Caption(state_, Text::Cancel));
    auto* row = new QHBoxLayout;
    row->addWidget(cmdRemove);
    row->addStretch(1);
    row->addWidget(buttons);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(lstLines, 1);
    layout->addLayout(row);
    resize(560, 380);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(cmdRemove, &QPushButton::clicked, this, &LinesDialog::Remove);
    connect(new QShortcut(QKeySequence::Delete, lstLines), &QShortcut::activated, this,
            &LinesDialog::Remove);
    connect(lstLines, &QTreeWidget::itemSelectionChanged, this,
            [this] { cmdRemove->setEnabled(!lstLines->selectedItems().isEmpty()); });
    Fill();
    for (int column = 0; column < lstLines->columnCount(); ++column) {
        lstLines->resizeColumnToContents(column);
    }
}

QString LinesDialog::Number(double value) const {
    return ToQString(terravo::NumberText::FormatScreen(value, "#0.0##", state_.decimalSeparator));
}

QString LinesDialog::NameOf(Index point) const {
    const std::string both = survey_.AllPoints().labels.NameAndCode(point);
    return both.empty() ? QString::number(point) : ToQString(both);
}

void LinesDialog::AddRow(Text kind, const QString& name, const QString& source,
                         const QString& vertices, std::function<void()> remove) {
    auto* item = new QTreeWidgetItem(lstLines, {Caption(state_, kind), name, source, vertices});
    item->setTextAlignment(3, Qt::AlignRight | Qt::AlignVCenter);
    removals_.push_back(std::move(remove));
}

void LinesDialog::AddLines(LineRole role, Text kind) {
    const std::vector<SharedLine>& lines = ListOf(plan_, role);
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const terravo::SurfaceLine& line = *lines[i];
        const QString source = line.source.empty() ? Caption(state_, Text::DrawnOnSheet)
                               : line.source == terravo::kCodesSource
                                   ? Caption(state_, Text::CodesTitle)
                                   : QFileInfo(ToQString(line.source)).fileName();
        const QString name =
            line.line.name.empty() ? QString::number(i + 1) : ToQString(line.line.name);
        AddRow(kind, name, source, QString::number(line.line.vertices.size()), [this, role, i] {
            std::vector<SharedLine>& list = ListOf(plan_, role);
            list.erase(list.begin() + static_cast<std::ptrdiff_t>(i));
        });
    }
}

void LinesDialog::Fill() {
    lstLines->clear();
    removals_.clear();
    AddLines(LineRole::Breakline, Text::LaidBreakline);
    AddLines(LineRole::Boundary, Text::LaidBoundary);
    AddLines(LineRole::Hole, Text::LaidHole);
    for (std::size_t i = 0; i < plan_.held.size(); ++i) {
        const terravo::HeldSide& side = plan_.held[i];
        AddRow(Text::LaidHeldSide, Number(side.from.x) + QStringLiteral("; ") + Number(side.from.y),
               Caption(state_, Text::DrawnOnSheet), QStringLiteral("2"), [this, i] {
                   plan_.held.erase(plan_.held.begin() + static_cast<std::ptrdiff_t>(i));
               });
    }
    for (std::size_t i = 0; i < plan_.heights.size(); ++i) {
        const terravo::ChangedHeight& height = plan_.heights[i];
        AddRow(Text::LaidHeight, NameOf(height.point), Number(height.height), QString(), [this, i] {
            plan_.heights.erase(plan_.heights.begin() + static_cast<std::ptrdiff_t>(i));
        });
    }
    for (std::size_t i = 0; i < plan_.excluded.size(); ++i) {
        AddRow(Text::LaidExcluded, NameOf(plan_.excluded[i]), QString(), QString(), [this, i] {
            plan_.excluded.erase(plan_.excluded.begin() + static_cast<std::ptrdiff_t>(i));
        });
    }
    if (lstLines->topLevelItemCount() > 0) {
        lstLines->setCurrentItem(lstLines->topLevelItem(0));
    }
    cmdRemove->setEnabled(!lstLines->selectedItems().isEmpty());
}

// From the last to the first, so that the places of the others stay what they were.
void LinesDialog::Remove() {
    std::vector<int> rows;
    for (const QTreeWidgetItem* item : lstLines->selectedItems()) {
        rows.push_back(lstLines->indexOfTopLevelItem(const_cast<QTreeWidgetItem*>(item)));
    }
    std::sort(rows.begin(), rows.end(), std::greater<>());
    for (const int row : rows) {
        removals_[static_cast<std::size_t>(row)]();
    }
    Fill();
}
