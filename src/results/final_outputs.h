#pragma once

/// The outputs of a calibration: the documents for the center and for the FWD, the run's record, the certificate, and
/// its data for other programs.
namespace bellmark {

class Program;

/// Writes them all in this order. Asks the operator where to save the two documents; a cancelled dialog means the
/// proposed name. For a document that cannot be written a box appears, and the others follow. A second call replaces
/// the files of the first. The certification is complete once both stages are accepted and the certificate is written.
/// Throws FileError for the run's data folder and its output folder.
void WriteFinalOutputs(Program& program);

}  // namespace bellmark
