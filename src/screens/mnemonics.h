#pragma once

class QWidget;

namespace bellmark {

/// Pairs the labels of a form with the fields beside or below them, and underlines a letter of each label that moves
/// the keyboard to its field: one that no button of the form and no other label has. A label without such a letter
/// keeps its text. Only fields that can be typed in or chosen from count.
void GiveMnemonics(QWidget& form);

}  // namespace bellmark
