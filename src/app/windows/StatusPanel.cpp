#include "app/windows/StatusPanel.h"

#include "app/windows/WorkInput.h"

#include <QApplication>
#include <QKeySequence>
#include <QTimer>

#include <utility>

namespace {

constexpr int kPatienceMilliseconds = 1000;
constexpr int kProgressSteps = 100;
constexpr int kNoteMilliseconds = 6000;
constexpr int kMargin = 6; // of texts, from the edges of the bar

} // namespace

StatusPanel::StatusPanel(QWidget* parent)
    : QStatusBar(parent), lblPointer_(new QLabel(this)), lblCounts_(new QLabel(this)),
      lblRemark_(new QLabel(this)), lblWork_(new QLabel(this)),
      barProgress_(new QProgressBar(this)), cmdStop_(new QPushButton(this)),
      input_(new WorkInput(cmdStop_, this)) {
    lblPointer_->setObjectName(QStringLiteral("lblPointer"));
    lblCounts_->setObjectName(QStringLiteral("lblCounts"));
    lblRemark_->setObjectName(QStringLiteral("lblRemark"));
    lblWork_->setObjectName(QStringLiteral("lblWork"));
    barProgress_->setObjectName(QStringLiteral("barProgress"));
    barProgress_->setRange(0, kProgressSteps);
    barProgress_->setMaximumWidth(200);
    lblCounts_->setContentsMargins(kMargin, 0, 3 * kMargin, 0);
    lblPointer_->setContentsMargins(kMargin, 0, kMargin, 0);
    addWidget(lblCounts_);
    addWidget(lblRemark_, 1);
    addWidget(lblWork_);
    addWidget(barProgress_);
    addWidget(cmdStop_);
    addPermanentWidget(lblPointer_);
    lblWork_->hide();
    barProgress_->hide();
    cmdStop_->setObjectName(QStringLiteral("cmdStop"));
    cmdStop_->setFocusPolicy(Qt::NoFocus); // the focus would be lost when the button goes
    cmdStop_->hide();
    connect(cmdStop_, &QPushButton::clicked, this, &StatusPanel::AskToStop);
    connect(input_, &WorkInput::StopAsked, this, &StatusPanel::AskToStop);
    connect(input_, &WorkInput::InterruptAsked, this, &StatusPanel::InterruptAsked);
    connect(input_, &WorkInput::CloseAsked, this, &StatusPanel::CloseAfterWork);
}

void StatusPanel::CloseAfterWork() {
    // A message box or a dialog would keep the program for ever.
    QWidget* last = nullptr;
    for (QWidget* modal = QApplication::activeModalWidget(); modal != nullptr && modal != last;
         modal = QApplication::activeModalWidget()) {
        last = modal;
        modal->close();
    }
    if (depth_ == 0) {
        emit CloseWanted();
        return;
    }
    closeWanted_ = true;
    AskToStop();
}

void StatusPanel::AskToStop() {
    cmdStop_->setEnabled(false);
    emit StopAsked();
}

void StatusPanel::ShowPointer(const QString& place) {
    lblPointer_->setText(place);
}

void StatusPanel::ShowNote(const QString& note) {
    showMessage(note, kNoteMilliseconds);
}

void StatusPanel::ShowCounts(const QString& counts, const QString& remark) {
    lblCounts_->setText(counts);
    lblRemark_->setText(remark);
    lblRemark_->setToolTip(remark);
}

void StatusPanel::BeginWork(const QString& text, const QString& stopText, bool givesWay) {
    if (depth_++ == 0) {
        givesWay_ = givesWay;
        if (givesWay_) {
            input_->Begin(true);
        } else {
            clearMessage();
            QApplication::setOverrideCursor(Qt::WaitCursor);
        }
        lblWork_->setText(text);
        cmdStop_->setText(stopText);
        cmdStop_->setToolTip(QKeySequence(Qt::Key_Escape).toString(QKeySequence::NativeText));
        cmdStop_->setEnabled(true);
        since_.start();
    }
}

void StatusPanel::ShowProgress(double done) {
    if (depth_ == 0 || since_.elapsed() < kPatienceMilliseconds) {
        if (depth_ > 0 && givesWay_) {
            input_->Poll();
        }
        return;
    }
    barProgress_->setValue(static_cast<int>(done * kProgressSteps));
    if (barProgress_->isHidden()) {
        lblWork_->show();
        barProgress_->show();
        cmdStop_->show();
        input_->Begin(givesWay_);
    }
    input_->Poll();
}

void StatusPanel::EndWork() {
    if (--depth_ == 0) {
        if (!givesWay_) {
            QApplication::restoreOverrideCursor();
        }
        input_->End();
        lblWork_->hide();
        barProgress_->hide();
        cmdStop_->hide();
        if (std::exchange(closeWanted_, false)) {
            QTimer::singleShot(0, this, &StatusPanel::CloseWanted);
        }
    }
}
