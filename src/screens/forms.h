#pragma once

#include <QWidget>
#include <memory>
#include <string>

namespace bellmark {

/// The form of a screen by the screen's name; nullptr when there is none.
std::unique_ptr<QWidget> MakeForm(const std::string& screenName);

/// The band on top of every screen with a page header.
std::unique_ptr<QWidget> MakePageHeader();

}  // namespace bellmark
