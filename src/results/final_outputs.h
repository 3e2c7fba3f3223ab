#pragma once

/// What a calibration leaves behind: the documents for the center and for the FWD, the run's record, the certificate,
/// and its data for other programs.
namespace bellmark {

class Program;

/// Writes them all, in their order, asking the operator where the two documents are to go; a cancelled dialog takes the
/// name that it proposed. A document that cannot be written is told in a box and the others follow. Done again it
/// replaces what it wrote. The certification is complete once both stages are accepted and the certificate is written.
/// Throws FileError for the run's data folder and its output folder.
void WriteFinalOutputs(Program& program);

}  // namespace bellmark
