#include "app/StatusPanel.h"

#include "util/NumberText.h"

#include <QApplication>

namespace {

constexpr int kPatienceMilliseconds = 1000;
constexpr int kProgressSteps = 100;

QString FullPrecision(double value) {
    return QString::number(value, 'g', 15);
}

} // namespace

StatusPanel::StatusPanel(QWidget* parent)
    : QStatusBar(parent), lblPointer_(new QLabel(this)), lblCounts_(new QLabel(this)),
      lblRemark_(new QLabel(this)), lblWork_(new QLabel(this)),
      barProgress_(new QProgressBar(this)) {
    lblPointer_->setObjectName(QStringLiteral("lblPointer"));
    lblCounts_->setObjectName(QStringLiteral("lblCounts"));
    lblRemark_->setObjectName(QStringLiteral("lblRemark"));
    lblWork_->setObjectName(QStringLiteral("lblWork"));
    barProgress_->setObjectName(QStringLiteral("barProgress"));
    barProgress_->setRange(0, kProgressSteps);
    barProgress_->setMaximumWidth(200);
    lblCounts_->setContentsMargins(6, 0, 18, 0);
    addWidget(lblCounts_);
    addWidget(lblRemark_, 1);
    addWidget(lblWork_);
    addWidget(barProgress_);
    addPermanentWidget(lblPointer_);
    lblWork_->hide();
    barProgress_->hide();
}

void StatusPanel::ShowPointer(double x, double y) {
    lblPointer_->setText(FullPrecision(x) + QStringLiteral(", ") + FullPrecision(y));
}

void StatusPanel::ShowCounts(const QString& counts, const QString& remark) {
    lblCounts_->setText(counts);
    lblRemark_->setText(remark);
    lblRemark_->setToolTip(remark);
}

void StatusPanel::BeginWork(const QString& text) {
    if (depth_++ == 0) {
        QApplication::setOverrideCursor(Qt::WaitCursor);
        lblWork_->setText(text);
        since_.start();
    }
}

void StatusPanel::ShowProgress(double done) {
    if (depth_ == 0 || since_.elapsed() < kPatienceMilliseconds) {
        return;
    }
    const int step = static_cast<int>(done * kProgressSteps);
    if (barProgress_->isVisible() && step == barProgress_->value()) {
        return;
    }
    barProgress_->setValue(step);
    lblWork_->show();
    barProgress_->show();
    repaint();
}

void StatusPanel::EndWork() {
    if (--depth_ == 0) {
        QApplication::restoreOverrideCursor();
        lblWork_->hide();
        barProgress_->hide();
    }
}
