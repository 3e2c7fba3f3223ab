#pragma once

#include <QWidget>
#include <memory>
#include <string>

namespace bellmark {

/// The form of a screen by the screen's name; nullptr when there is none.
std::unique_ptr<QWidget> MakeForm(const std::string& screenName);

/// The band that every screen with a page header wears on top.
std::unique_ptr<QWidget> MakePageHeader();

}  // namespace bellmark
