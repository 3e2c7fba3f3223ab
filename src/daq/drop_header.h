#pragma once

namespace bellmark {

struct CenterConfig;
struct DropFileHeader;
struct DropRecord;

/// Takes the day's readings and the burst of a saved drop in place of today's. A file holds few digits: a value in
/// force that rounds to the one in the file keeps all of its own.
void TakeDropHeader(const DropFileHeader& header, CenterConfig& center, DropRecord& drop);

}  // namespace bellmark
