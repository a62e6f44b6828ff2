#include "app/windows/CheckWindow.h"

#include "app/windows/CloseUpView.h"
#include "app/windows/Controls.h"
#include "app/windows/SchemeStyle.h"

#include <QBoxLayout>
#include <QCloseEvent>
#include <QHeaderView>
#include <QKeyEvent>
#include <QSplitter>
#include <QTimer>

using terravo::Text;

CheckWindow::CheckWindow(const terravo::RunState& state, terravo::Session& session,
                         const terravo::ColourScheme& scheme)
    : state_(state), session_(session), findings_(state, session, this) {
    setObjectName(QStringLiteral("CheckWindow"));
    setWindowTitle(Caption(state_, Text::CheckTitle));
    MakeControls();
    ApplyColourScheme(*this, scheme);
    ConnectControls();
    Refresh();
}

void CheckWindow::MakeControls() {
    lblFindings = Named(new QLabel(this), "lblFindings");
    lblSentence = Named(new QLabel(this), "lblSentence");
    lblExcluded = Named(new QLabel(this), "lblExcluded");
    for (QLabel* label : {lblFindings, lblSentence, lblExcluded}) {
        label->setWordWrap(true);
    }
    sorted_.setSourceModel(&findings_);
    sorted_.setSortRole(FindingsModel::kSortRole);
    lstFindings = Named(new QTreeView(this), "lstFindings");
    lstFindings->setModel(&sorted_);
    lstFindings->setUniformRowHeights(true);
    lstFindings->setAlternatingRowColors(true);
    lstFindings->setAllColumnsShowFocus(true);
    lstFindings->setSelectionMode(QAbstractItemView::ExtendedSelection);
    lstFindings->setSortingEnabled(true);
    lstFindings->sortByColumn(-1, Qt::AscendingOrder); // the order of the check
    lstFindings->header()->setSectionsMovable(false);
    lstFindings->setAccessibleName(Caption(state_, Text::CheckTitle));
    lstFindings->setAccessibleDescription(Caption(state_, Text::ExcludeHint));
    lstFindings->installEventFilter(this);
    picCloseUp = Named(new CloseUpView(this), "picCloseUp");
    picCloseUp->setAccessibleName(Caption(state_, Text::CloseUp));
    picCloseUp->setToolTip(Caption(state_, Text::CloseUp));

    auto* nearby = new QWidget(this);
    auto* nearbyLayout = new QVBoxLayout(nearby);
    nearbyLayout->setContentsMargins(0, 0, 0, 0);
    nearbyLayout->addWidget(lblSentence);
    nearbyLayout->addWidget(picCloseUp, 1);
    auto* splitter = new QSplitter(Qt::Vertical, this);
    splitter->addWidget(lstFindings);
    splitter->addWidget(nearby);
    splitter->setStretchFactor(0, 3);
    splitter->setStretchFactor(1, 2);
    splitter->setChildrenCollapsible(false);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(lblFindings);
    layout->addWidget(splitter, 1);
    layout->addWidget(lblExcluded);
    layout->addLayout(MakeButtons());
}

QBoxLayout* CheckWindow::MakeButtons() {
    const auto button = [this](Text caption, const char* name) {
        return Named(new QPushButton(Caption(state_, caption), this), name);
    };
    cmdCheck = button(Text::CheckAgain, "cmdCheck");
    cmdTakeBack = button(Text::TakeAllBack, "cmdTakeBack");
    cmdSaveRest = button(Text::SaveRemaining, "cmdSaveRest");
    cmdSaveExcluded = button(Text::SaveExcluded, "cmdSaveExcluded");
    auto* grid = new QGridLayout;
    grid->addWidget(cmdCheck, 0, 0);
    grid->addWidget(cmdTakeBack, 0, 1);
    grid->addWidget(cmdSaveRest, 1, 0);
    grid->addWidget(cmdSaveExcluded, 1, 1);
    auto* row = new QHBoxLayout;
    row->addLayout(grid);
    return row;
}

void CheckWindow::ConnectControls() {
    connect(lstFindings->selectionModel(), &QItemSelectionModel::currentChanged, this,
            &CheckWindow::ShowCurrent);
    connect(cmdCheck, &QPushButton::clicked, this, [this] { session_.CheckSurvey(); });
    connect(cmdTakeBack, &QPushButton::clicked, this,
            [this] { session_.SetExcluded(session_.TheSurvey().ExcludedPoints(), false); });
    connect(cmdSaveRest, &QPushButton::clicked, this, [this] { session_.SavePoints(); });
    connect(cmdSaveExcluded, &QPushButton::clicked, this,
            [this] { session_.SaveExcludedPoints(); });
}

void CheckWindow::Refresh() {
    const bool areOthers = findings_.Refresh();
    if (areOthers) {
        for (const int column : {FindingsModel::Exclude, FindingsModel::Severity,
                                 FindingsModel::Kind, FindingsModel::Point, FindingsModel::Line}) {
            lstFindings->resizeColumnToContents(column);
        }
        lstFindings->setCurrentIndex(sorted_.index(0, FindingsModel::Exclude));
    }
    ShowCounts();
    ShowCurrent();
    if (!session_.Review().IsMade() && session_.TheSurvey().AllPoints().count > 0) {
        QTimer::singleShot(0, this, [this] {
            if (!session_.Review().IsMade()) {
                session_.CheckSurvey();
            }
        });
    }
}

void CheckWindow::FollowMark() {
    const std::optional<terravo::Index> point = session_.MarkedPoint();
    const auto pointOf = [this](const QModelIndex& row) {
        const QModelIndex source = sorted_.mapToSource(row);
        return source.isValid() ? findings_.PointAt(source) : std::nullopt;
    };
    if (!point || pointOf(lstFindings->currentIndex()) == point) {
        return;
    }
    for (int row = 0; row < sorted_.rowCount(); ++row) {
        const QModelIndex index = sorted_.index(row, FindingsModel::Exclude);
        if (pointOf(index) == point) {
            lstFindings->setCurrentIndex(index);
            return;
        }
    }
}

void CheckWindow::ShowCounts() {
    const terravo::SurveyReview& review = session_.Review();
    const auto [errors, warnings, notes] = review.Counts();
    const bool hasPoints = session_.TheSurvey().AllPoints().count > 0;
    const std::size_t excluded = session_.TheSurvey().ExcludedPoints().size();
    QString text = !hasPoints         ? Caption(state_, Text::CheckNoPoints)
                   : !review.IsMade() ? Caption(state_, Text::CheckNotMade)
                   : errors + warnings + notes == 0
                       ? Caption(state_, Text::CheckNothing)
                       : Caption(state_, Text::CheckCounts).arg(errors).arg(warnings).arg(notes);
    if (review.IsStale()) {
        text += QLatin1Char('\n') + Caption(state_, Text::CheckStale);
    }
    lblFindings->setText(text);
    lblExcluded->setText(Caption(state_, Text::ExcludedPoints).arg(excluded));
    cmdCheck->setEnabled(hasPoints);
    cmdSaveRest->setEnabled(hasPoints);
    cmdTakeBack->setEnabled(excluded > 0);
    cmdSaveExcluded->setEnabled(excluded > 0);
}

void CheckWindow::ShowCurrent() {
    const QModelIndex current = sorted_.mapToSource(lstFindings->currentIndex());
    const std::optional<terravo::Index> point =
        current.isValid() ? findings_.PointAt(current) : std::nullopt;
    session_.MarkPoint(point);
    lblSentence->setText(
        current.isValid()
            ? findings_.data(current.siblingAtColumn(FindingsModel::Finding), Qt::DisplayRole)
                  .toString()
            : QString());
    picCloseUp->Show(point ? std::optional(terravo::MakeCloseUp(session_.TheSurvey(), *point))
                           : std::nullopt,
                     state_.decimalSeparator);
}

// What the current row says goes for all that are selected, in one redrawing.
void CheckWindow::ToggleSelected() {
    const QModelIndex current = sorted_.mapToSource(lstFindings->currentIndex());
    if (!current.isValid() || !findings_.PointAt(current)) {
        return;
    }
    std::vector<terravo::Index> points = findings_.PointsOfBox(current);
    for (const QModelIndex& row : lstFindings->selectionModel()->selectedRows()) {
        const std::vector<terravo::Index> others = findings_.PointsOfBox(sorted_.mapToSource(row));
        points.insert(points.end(), others.begin(), others.end());
    }
    session_.SetExcluded(points, findings_.BoxAt(current) != Qt::Checked);
}

bool CheckWindow::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::KeyPress &&
        static_cast<QKeyEvent*>(event)->key() == Qt::Key_Space) {
        ToggleSelected();
        return true;
    }
    return QWidget::eventFilter(watched, event);
}

void CheckWindow::closeEvent(QCloseEvent* event) {
    session_.MarkPoint(std::nullopt);
    emit Closing();
    event->accept();
}
