#include "tables/table.h"

#ifdef BELLMARK_MDB
#include <fcntl.h>
#include <mdbtools.h>
#include <poll.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdint>
#include <cstring>
#include <memory>

#include "platform/numbers.h"
#endif

namespace bellmark {

#ifdef BELLMARK_MDB

namespace {

constexpr std::size_t mostTextBytes = std::size_t{16} * 1024 * 1024;
constexpr rlim_t mostMemory = rlim_t{1024} * 1024 * 1024;

/// The messages of the reading process: a letter, the length of a text, the text.
enum class Piece : char { Failure = 'F', Column = 'C', NewRow = 'R', Cell = 'V', End = 'E' };

/// The side of the reading process. A damaged file can crash the library, so nothing here is shared with the program.
class Teller {
  public:
    explicit Teller(int pipe) : pipe_(pipe) {}

    void Tell(Piece piece, std::string_view text = {}) {
        const auto length = static_cast<std::uint32_t>(text.size());
        std::string bytes(1 + sizeof(length), static_cast<char>(piece));
        std::memcpy(bytes.data() + 1, &length, sizeof(length));
        bytes += text;
        for (std::string_view rest = bytes; !rest.empty();) {
            const ssize_t written = write(pipe_, rest.data(), rest.size());
            if (written < 0) _exit(1);  // the program no longer reads
            rest.remove_prefix(static_cast<std::size_t>(written));
        }
    }

  private:
    int pipe_;
};

void TellTable(Teller& teller, const Path& file, const std::string& name) {
    const std::string fileName = file.string();
    const std::unique_ptr<MdbHandle, void (*)(MdbHandle*)> database(mdb_open(fileName.c_str(), MDB_NOFLAGS), mdb_close);
    if (!database) return teller.Tell(Piece::Failure, PathText(file) + " is no database that can be read.");
    std::string wanted = name;
    const std::unique_ptr<MdbTableDef, void (*)(MdbTableDef*)> definition(
        mdb_read_table_by_name(database.get(), wanted.data(), MDB_TABLE), mdb_free_tabledef);
    if (!definition) return teller.Tell(Piece::Failure, PathText(file) + " has no table " + name + '.');
    const GPtrArray* columns = mdb_read_columns(definition.get());
    if (!columns) {
        return teller.Tell(Piece::Failure, "The table " + name + " of " + PathText(file) + " cannot be read.");
    }
    // The library writes the texts of each row into these buffers.
    std::vector<std::vector<char>> texts(definition->num_cols, std::vector<char>(database->bind_size));
    for (unsigned i = 0; i < definition->num_cols; ++i) {
        const auto* column = static_cast<const MdbColumn*>(g_ptr_array_index(columns, i));
        teller.Tell(Piece::Column, column->name);
        mdb_bind_column(definition.get(), static_cast<int>(i) + 1, texts[i].data(), nullptr);
    }
    mdb_rewind_table(definition.get());
    while (mdb_fetch_row(definition.get())) {
        teller.Tell(Piece::NewRow);
        for (const auto& text : texts) teller.Tell(Piece::Cell, text.data());
    }
    teller.Tell(Piece::End);
}

/// A damaged count must not use up the machine's memory. The address sanitizer itself needs more than the limit.
void LimitMemory() {
#ifndef __SANITIZE_ADDRESS__
    const rlimit memory{mostMemory, mostMemory};
    setrlimit(RLIMIT_DATA, &memory);
#endif
}

/// A separate process that reads the table and ends with this object: a damaged file can make the library loop for ever
/// or crash.
class ReadingProcess {
  public:
    ReadingProcess(const Path& file, const std::string& name, std::chrono::milliseconds longest) {
        std::array<int, 2> ends{};
        if (pipe2(ends.data(), O_CLOEXEC) != 0) throw TableError(PathText(file) + " cannot be read now.");
        process_ = fork();
        if (process_ == 0) {
            close(ends[0]);
            LimitMemory();
            // Ends this process when the program is killed; it would otherwise keep its copy of the program's lock.
            alarm(static_cast<unsigned>(std::chrono::ceil<std::chrono::seconds>(longest).count()) + 1);
            const int nowhere = open("/dev/null", O_WRONLY);  // the library reports every oddity to stderr
            if (nowhere >= 0) dup2(nowhere, STDERR_FILENO);
            Teller teller(ends[1]);
            TellTable(teller, file, name);
            _exit(0);
        }
        close(ends[1]);
        pipe_ = ends[0];
        if (process_ < 0) {
            close(pipe_);
            throw TableError(PathText(file) + " cannot be read now.");
        }
    }
    ~ReadingProcess() {
        kill(process_, SIGKILL);
        waitpid(process_, nullptr, 0);
        close(pipe_);
    }
    ReadingProcess(const ReadingProcess&) = delete;
    ReadingProcess& operator=(const ReadingProcess&) = delete;

    /// Waits for more data until the time is over. False at the end of the data and when the time is over.
    bool Listen(std::string& said, std::chrono::steady_clock::time_point until) const {
        using std::chrono::milliseconds;
        for (;;) {
            const auto left = std::chrono::duration_cast<milliseconds>(until - std::chrono::steady_clock::now());
            pollfd waiting{pipe_, POLLIN, 0};
            const int ready = left.count() > 0 ? poll(&waiting, 1, static_cast<int>(left.count())) : 0;
            if (ready < 0 && errno == EINTR) continue;
            if (ready <= 0) return false;
            std::array<char, 65536> bytes{};
            const ssize_t got = read(pipe_, bytes.data(), bytes.size());
            if (got < 0 && errno == EINTR) continue;
            if (got > 0) said.append(bytes.data(), static_cast<std::size_t>(got));
            return got > 0;
        }
    }

  private:
    pid_t process_ = -1;
    int pipe_ = -1;
};

/// Builds the table from the messages of the reading process.
class Listener {
  public:
    explicit Listener(std::size_t mostRows) : mostRows_(mostRows) {}

    bool IsEnded() const { return ended_; }
    bool IsTooMuch() const { return textBytes_ > mostTextBytes || table_.rows.size() > mostRows_; }

    /// Takes the complete messages off the front.
    void Take(std::string& said) {
        std::uint32_t length = 0;
        constexpr std::size_t head = 1 + sizeof(length);
        std::size_t at = 0;
        while (said.size() - at >= head) {
            std::memcpy(&length, said.data() + at + 1, sizeof(length));
            if (said.size() - at - head < length) break;
            Add(Piece{said[at]}, said.substr(at + head, length));
            at += head + length;
        }
        said.erase(0, at);
    }

    /// Incomplete rows are left out.
    Table TakeTable() {
        auto& rows = table_.rows;
        if (!rows.empty() && rows.back().size() < table_.columns.size()) rows.pop_back();
        rows.resize(std::min(rows.size(), mostRows_));
        return std::move(table_);
    }

  private:
    void Add(Piece piece, std::string text) {
        textBytes_ += text.size();
        switch (piece) {
            case Piece::Failure:
                throw TableError(text);
            case Piece::Column:
                table_.columns.push_back(std::move(text));
                break;
            case Piece::NewRow:
                table_.rows.emplace_back();
                break;
            case Piece::Cell:
                table_.rows.back().push_back(std::move(text));
                break;
            case Piece::End:
                ended_ = true;
                break;
        }
    }

    std::size_t mostRows_;
    std::size_t textBytes_ = 0;
    bool ended_ = false;
    Table table_;
};

}  // namespace

bool CanReadMdb() {
    return true;
}

Table ReadMdbTable(const Path& file, const std::string& name, const TableLimits& limits) {
    std::error_code error;
    const auto bytes = std::filesystem::file_size(file, error);
    if (!error && bytes > limits.fileBytes) throw TableError(PathText(file) + " is too large to be a list of centers.");
    const ReadingProcess reader(file, name, limits.time);
    const auto until = std::chrono::steady_clock::now() + limits.time;
    Listener listener(limits.rows);
    std::string said;
    while (!listener.IsEnded() && !listener.IsTooMuch() && reader.Listen(said, until)) listener.Take(said);
    const bool isWhole = listener.IsEnded() && !listener.IsTooMuch();
    Table table = listener.TakeTable();
    if (isWhole) return table;
    if (table.rows.empty()) throw TableError(PathText(file) + " is damaged: no entry of it can be read.");
    table.problem = PathText(file) + " is damaged: it was read as far as it goes, " + NumberText(table.rows.size()) +
                    " entries. Others may be missing.";
    return table;
}

#else

bool CanReadMdb() {
    return false;
}

Table ReadMdbTable(const Path& file, const std::string&, const TableLimits&) {
    throw TableError(PathText(file) + " cannot be read: this program was built without the library for it.");
}

#endif

}  // namespace bellmark
