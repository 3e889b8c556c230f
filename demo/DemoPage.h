#pragma once

#include <QString>
#include <QWidget>
#include <functional>

namespace qxdemo {

// The families the gallery has a tab for, in tab order.
enum class Family { Images, Sound, Display, Files, Settings, Application, Utilities };

// A gallery section: a titled widget on its family's tab.
struct Page {
    Family family;
    QString title;
    std::function<QWidget*(QWidget* parent)> create;
};

bool registerPage(Page page);

} // namespace qxdemo

#define QXDEMO_CONCAT_(a, b) a##b
#define QXDEMO_CONCAT(a, b) QXDEMO_CONCAT_(a, b)
// Registers a gallery section at program start: QXDEMO_PAGE({Family::Images, "GIF", factory});
#define QXDEMO_PAGE(...)                                                                           \
    namespace {                                                                                    \
    const bool QXDEMO_CONCAT(qxdemoRegistered_, __LINE__) = qxdemo::registerPage(__VA_ARGS__);     \
    }
