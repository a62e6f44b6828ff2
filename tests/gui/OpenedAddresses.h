// Takes the addresses that would open the system's browser.
#pragma once

#include <QList>
#include <QObject>
#include <QUrl>

namespace terravo {

class OpenedAddresses : public QObject {
    Q_OBJECT
public:
    QList<QUrl> opened;
public slots:
    void Open(const QUrl& address) { opened += address; }
};

} // namespace terravo
