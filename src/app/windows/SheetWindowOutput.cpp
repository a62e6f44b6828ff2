// The sheet window's commands that hand the sheet out: as a file and on paper.
#include "app/windows/Controls.h"
#include "app/windows/SheetToFile.h"
#include "app/windows/SheetWindow.h"
#include "export/SheetPrint.h"

#include <QMessageBox>
#include <QPrintDialog>
#include <QPrinter>

using terravo::Text;

// Of this moment: an edit or a choice may have been made a moment ago. None: there is none, or it
// was stopped.
std::shared_ptr<const terravo::SheetScene> SheetWindow::SheetOfNow() {
    if (!HasSheet() || session_.RefusesToExport()) {
        return nullptr;
    }
    soon_.stop();
    picSheet->DropPatches();
    MakeNow();
    return trouble_.isEmpty() ? picSheet->SharedScene() : nullptr;
}

void SheetWindow::Export() {
    const std::shared_ptr<const terravo::SheetScene> scene = SheetOfNow();
    if (!scene) {
        return;
    }
    const std::string& title = made_->plan.texts.title;
    SheetToFile(state_, session_, "sheet", *scene,
                title.empty() ? session_.Points().sourceName : title);
}

void SheetWindow::Print() {
    const std::shared_ptr<const terravo::SheetScene> scene = SheetOfNow();
    if (!scene) {
        return;
    }
    QPrinter printer(QPrinter::HighResolution);
    printer.setPageLayout(terravo::PageOfSheet(*scene));
    printer.setFullPage(true);
    printer.setDocName(ToQString(session_.Points().sourceName));
    printer.setCreator(QStringLiteral("Terravo"));
    const bool chosen =
        askPrinter ? askPrinter(printer) : QPrintDialog(&printer, this).exec() == QDialog::Accepted;
    if (!chosen) {
        return;
    }
    printer.setFullPage(true);
    if (const auto cut = terravo::WhatPageCuts(printer.pageLayout(), *scene)) {
        const QString sentence =
            ToQString(terravo::WithValues(state_.texts[cut->sentence], cut->values)) +
            QStringLiteral("\n\n") + Caption(state_, Text::PrintAllTheSame);
        const bool anyway =
            askAnyway ? askAnyway(sentence)
                      : QMessageBox::question(this, windowTitle(), sentence) == QMessageBox::Yes;
        if (!anyway) {
            return;
        }
    }
    try {
        terravo::PaintOnPage(printer, *scene);
    } catch (const terravo::AppError& error) {
        QMessageBox::critical(this, windowTitle(), ToQString(error.what()));
    }
}
