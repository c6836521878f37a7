#pragma once

#include <string>

/// One line on standard error that tells what is going on, rewritten in place. It shows on a
/// terminal only: into a pipe or a file nothing is written. It goes with the object.
class cli_Progress {
  public:
    cli_Progress();
    ~cli_Progress() { Clear(); }
    cli_Progress(const cli_Progress&) = delete;
    cli_Progress& operator=(const cli_Progress&) = delete;

    /// Shows `text`, cut to the width of the terminal.
    void Show(const std::string& text);
    /// Shows `text` with the done part of the work, 0 to 1, as a percentage; below 0 it is unknown.
    void Show(const std::string& text, double fraction);
    /// Takes the line away, so that other output starts on a clean one.
    void Clear();

  private:
    bool isTerminal;
    std::string shown;
};
