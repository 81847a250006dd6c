#include "CZRB_File.h"

#include "CZRB_Exception.h"
#include "CZRB_Uint8Vector.h"

#include <cerrno>
#include <cstdio>
#include <string>
#include <sys/stat.h>
#include <sys/types.h>
#include <unistd.h>
#include <vector>

static_assert(sizeof(off_t) == 8, "64-bit file positions are required");

namespace {

// The longest full path handed out: a work area of 4096 characters with its terminator.
constexpr std::size_t kMaxFullPath = 4095;

// The low 32 bits of a 64-bit length, as the runtime calls take them.
std::size_t Low32(unsigned __int64 length) {
    return static_cast<std::size_t>(length & 0xFFFFFFFFULL);
}

// How a text line scan ended: at LF, at the length or the character limit, or on a failed read.
enum t_LineScan : int { LINE_ENDED, LINE_STOPPED, LINE_READ_FAILED };

// A caller's character buffer seen as a growing line.
struct CharacterLine {
    char* buffer;
    unsigned int stored;
    std::size_t size() const { return stored; }
    void push_back(char c) { buffer[stored++] = c; }
};

// The byte rules of both ReadTextLine forms: reads one byte at a time from `position` up to
// `length` (the position is counted here instead of being told for every byte), drops NUL and
// CR, ends at LF and stores every other byte in `line` while it holds fewer than `maxChars`.
template <typename Line>
t_LineScan ScanTextLine(std::FILE* file, unsigned __int64 position, unsigned __int64 length,
                        std::size_t maxChars, Line& line) {
    while (position < length && line.size() < maxChars) {
        const int byte = std::getc(file);
        if (byte == EOF) {
            return LINE_READ_FAILED;
        }
        ++position;
        if (byte == 0 || byte == '\r') {
            continue;
        }
        if (byte == '\n') {
            return LINE_ENDED;
        }
        line.push_back(static_cast<char>(byte));
    }
    return LINE_STOPPED;
}

// The absolute form of `path` against `base` (itself absolute), with empty parts and "."
// dropped and ".." taking back one part (never above the root).
std::string ResolveLexically(const std::string& base, const std::string& path) {
    std::vector<std::string> parts;
    auto addParts = [&parts](const std::string& text) {
        std::size_t start = 0;
        while (start <= text.size()) {
            std::size_t end = text.find('/', start);
            if (end == std::string::npos) {
                end = text.size();
            }
            const std::string part = text.substr(start, end - start);
            if (part == "..") {
                if (!parts.empty()) {
                    parts.pop_back();
                }
            } else if (!part.empty() && part != ".") {
                parts.push_back(part);
            }
            start = end + 1;
        }
    };
    if (path[0] != '/') {
        addParts(base);
    }
    addParts(path);
    std::string result;
    for (const std::string& part : parts) {
        result += '/';
        result += part;
    }
    if (result.empty()) {
        return std::string("/");
    }
    // A trailing separator of the argument is kept, as the path names a folder.
    if (path.back() == '/') {
        result += '/';
    }
    return result;
}

// The current directory, or an empty text when it cannot be told.
std::string CurrentDirectory() {
    std::vector<char> buffer(4096);
    while (getcwd(buffer.data(), buffer.size()) == nullptr) {
        if (errno != ERANGE || buffer.size() >= (1U << 20)) {
            return std::string();
        }
        buffer.resize(buffer.size() * 2);
    }
    return std::string(buffer.data());
}

} // namespace

// The stream shared by every copy of one opened file. The last owner flushes and closes it.
struct CZRB_File::CStream {
    std::FILE* file;

    explicit CStream(std::FILE* opened) : file(opened) {}
    ~CStream() { CloseFile(); }
    CStream(const CStream&) = delete;
    CStream& operator=(const CStream&) = delete;

    // Flushes and closes the stream once; later calls find it closed.
    void CloseFile() {
        if (file != nullptr) {
            std::fflush(file);
            std::fclose(file);
            file = nullptr;
        }
    }
};

CZRB_File::CZRB_File() : m_openFlags(0) {}

CZRB_File::CZRB_File(const CZRB_File& other) : CZRB_Object(other), m_openFlags(0) {
    DataCopy(other);
}

CZRB_File& CZRB_File::operator=(const CZRB_File& other) {
    DataCopy(other);
    return *this;
}

CZRB_File::~CZRB_File() {
    if (m_stream && m_stream->file != nullptr) {
        std::fflush(m_stream->file);
    }
}

void CZRB_File::DataCopy(const CZRB_File& other) {
    if (this == &other) {
        return;
    }
    m_stream = other.m_stream;
    m_openFlags = other.m_openFlags;
    m_name = other.m_name;
}

unsigned int CZRB_File::Open(const CZRB_String& path, unsigned int flags) {
    const bool write = (flags & OPEN_WRITE) != 0;
    const bool read = (flags & OPEN_READ) != 0;
    const bool create = (flags & OPEN_CREATE) != 0;
    const char* mode = nullptr;
    if (write && read) {
        mode = create ? "w+b" : "r+b";
    } else if (write) {
        mode = create ? "wb" : "ab";
    } else if (read) {
        mode = "rb";
    } else {
        return 1;
    }
    std::FILE* file = std::fopen(path.GetStringC(), mode);
    if (file == nullptr) {
        return 1;
    }
    std::fseek(file, 0, SEEK_SET);
    if (m_stream && m_stream.use_count() == 1) {
        // Kept as shipped: a stream still open here is not closed (the caller closes first);
        // this object only lets go of it.
        m_stream->file = nullptr;
    }
    m_stream = std::make_shared<CStream>(file);
    m_openFlags = flags;
    m_name = path;
    return 0;
}

unsigned int CZRB_File::Close() {
    if (m_stream) {
        m_stream->CloseFile();
    }
    m_openFlags = 0;
    return 0;
}

unsigned char CZRB_File::IsOpen() const {
    return m_stream && m_stream->file != nullptr ? 1 : 0;
}

unsigned int CZRB_File::GetOpenFlags() const {
    return m_openFlags;
}

unsigned int CZRB_File::ToStart() {
    return To(0, 1);
}

unsigned int CZRB_File::ToEnd() {
    return To(0, 2);
}

unsigned int CZRB_File::To(unsigned __int64 offset, unsigned int origin) {
    if (!IsOpen()) {
        return 19;
    }
    int whence = SEEK_CUR;
    switch (origin) {
    case 0:
        whence = SEEK_CUR;
        break;
    case 1:
        whence = SEEK_SET;
        break;
    case 2:
        whence = SEEK_END;
        break;
    default:
        return 2;
    }
    // Kept as shipped: the runtime reports failure as -1, so only a positive result counts.
    return fseeko(m_stream->file, static_cast<off_t>(offset), whence) > 0 ? 30 : 0;
}

unsigned __int64 CZRB_File::GetPos() const {
    if (!IsOpen()) {
        return 0;
    }
    const off_t position = ftello(m_stream->file);
    return position < 0 ? 0 : static_cast<unsigned __int64>(position);
}

unsigned __int64 CZRB_File::GetLength() const {
    if (!IsOpen()) {
        return 0;
    }
    std::FILE* file = m_stream->file;
    // A regular file opened without writing has no pending output: its status gives the same
    // length, and the text readers are spared two seeks and a buffer refill per line.
    struct stat status {};
    if ((m_openFlags & OPEN_WRITE) == 0 && fstat(fileno(file), &status) == 0 &&
        S_ISREG(status.st_mode)) {
        return static_cast<unsigned __int64>(status.st_size);
    }
    const off_t position = ftello(file);
    fseeko(file, 0, SEEK_END);
    const off_t length = ftello(file);
    if (position >= 0) {
        fseeko(file, position, SEEK_SET);
    }
    return length < 0 ? 0 : static_cast<unsigned __int64>(length);
}

unsigned char CZRB_File::IsEOF() const {
    return GetPos() >= GetLength() ? 1 : 0;
}

unsigned int CZRB_File::Flush() {
    if (!IsOpen() || std::fflush(m_stream->file) != 0) {
        return 19;
    }
    return 0;
}

unsigned int CZRB_File::Write(void* data, unsigned __int64 length, unsigned char flush) {
    if (!IsOpen()) {
        return 19;
    }
    const std::size_t count = Low32(length);
    const std::size_t written = count == 0 ? 0 : std::fwrite(data, 1, count, m_stream->file);
    unsigned int result = (written < count || (length >> 32) != 0) ? 30 : 0;
    if (flush != 0) {
        std::fflush(m_stream->file);
    }
    return result;
}

unsigned int CZRB_File::Read(void* data, unsigned __int64 length) {
    if (!IsOpen()) {
        return 19;
    }
    const std::size_t count = Low32(length);
    const std::size_t read = count == 0 ? 0 : std::fread(data, 1, count, m_stream->file);
    return (read < count || (length >> 32) != 0) ? 30 : 0;
}

unsigned int CZRB_File::ReadTextLine(char* buffer, unsigned int maxChars) {
    if (!IsOpen() || buffer == nullptr) {
        return 30;
    }
    const unsigned __int64 length = GetLength();
    if (length == 0) {
        return 30;
    }
    CharacterLine text{buffer, 0};
    const t_LineScan scan = ScanTextLine(m_stream->file, GetPos(), length, maxChars, text);
    if (scan == LINE_READ_FAILED || (scan == LINE_STOPPED && text.size() == 0)) {
        return 30;
    }
    buffer[text.size()] = '\0';
    return 0;
}

unsigned int CZRB_File::ReadTextLine(CZRB_String& line) {
    if (!IsOpen()) {
        return 24;
    }
    const unsigned __int64 length = GetLength();
    if (length == 0) {
        return 24;
    }
    std::string text;
    const t_LineScan scan = ScanTextLine(m_stream->file, GetPos(), length, text.max_size(), text);
    if (scan == LINE_READ_FAILED) {
        return 30;
    }
    if (scan == LINE_STOPPED && text.empty()) {
        return 24;
    }
    line = CZRB_String(text.data(), static_cast<unsigned int>(text.size()));
    return 0;
}

unsigned int CZRB_File::WriteText(const char* text) {
    const std::size_t count = text == nullptr ? 0 : std::char_traits<char>::length(text);
    if (count == 0) {
        return 0;
    }
    if (!IsOpen()) {
        return 19;
    }
    const std::size_t written = std::fwrite(text, 1, count, m_stream->file);
    std::fflush(m_stream->file);
    return written < count ? 30 : 0;
}

unsigned int CZRB_File::WriteText(const CZRB_String& text) {
    return WriteText(text.GetStringC());
}

unsigned int CZRB_File::WriteTextLine(const char* text, unsigned int lineEnd) {
    unsigned int result = WriteText(text);
    if (result != 0) {
        return result;
    }
    // The line-end bytes in their fixed order, each written and flushed on its own.
    const struct {
        unsigned int flag;
        unsigned char byte;
    } endings[] = {{LINE_END_NUL, 0}, {LINE_END_CR, '\r'}, {LINE_END_LF, '\n'}};
    for (const auto& ending : endings) {
        if ((lineEnd & ending.flag) == 0) {
            continue;
        }
        unsigned char byte = ending.byte;
        result = Write(&byte, 1, 1);
        if (result != 0) {
            return result;
        }
    }
    return 0;
}

unsigned int CZRB_File::WriteTextLine(const CZRB_String& text, unsigned int lineEnd) {
    return WriteTextLine(text.GetStringC(), lineEnd);
}

CZRB_String CZRB_File::GetName() const {
    return GetNameFromPath(m_name);
}

CZRB_String CZRB_File::GetPath() const {
    return GetPathFromPath(m_name);
}

CZRB_String CZRB_File::GetFullPath() const {
    return GetFullPathFromPath(m_name);
}

unsigned char CZRB_File::IsPresent(const CZRB_String& path) {
    struct stat status {};
    return stat(path.GetStringC(), &status) == 0 ? 1 : 0;
}

unsigned int CZRB_File::DeleteFile(const CZRB_String& path) {
    return std::remove(path.GetStringC()) != 0 ? 30 : 0;
}

unsigned int CZRB_File::CopyFile(const CZRB_String& destination, const CZRB_String& source,
                                 unsigned int blockSize) {
    CZRB_File input;
    if (input.Open(source, OPEN_READ) != 0) {
        return 1;
    }
    CZRB_File output;
    if (output.Open(destination, OPEN_WRITE | OPEN_CREATE) != 0) {
        input.Close();
        return 1;
    }
    // Both files are closed by their owners' destructors should this throw (code 9).
    CZRB_Uint8Vector block(blockSize);
    unsigned __int64 remaining = input.GetLength();
    while (remaining > 0) {
        const unsigned int chunk =
            remaining < blockSize ? static_cast<unsigned int>(remaining) : blockSize;
        if (input.Read(block.GetBuf(), chunk) != 0 || output.Write(block.GetBuf(), chunk, 0) != 0) {
            input.Close();
            output.Close();
            return 30;
        }
        output.Flush();
        remaining -= chunk;
    }
    input.Close();
    output.Close();
    return 0;
}

CZRB_String CZRB_File::GetFullPathFromPath(const CZRB_String& path) {
    const std::string text(path.GetStringC());
    if (text.empty()) {
        return CZRB_String();
    }
    std::string base;
    if (text[0] != '/') {
        base = CurrentDirectory();
        if (base.empty()) {
            return CZRB_String();
        }
    }
    const std::string full = ResolveLexically(base, text);
    if (full.size() > kMaxFullPath) {
        return CZRB_String();
    }
    return CZRB_String(full.c_str());
}

CZRB_String CZRB_File::GetNameFromPath(const CZRB_String& path) {
    const std::string full(GetFullPathFromPath(path).GetStringC());
    const std::size_t slash = full.rfind('\\');
    return CZRB_String(slash == std::string::npos ? full.c_str() : full.c_str() + slash + 1);
}

CZRB_String CZRB_File::GetPathFromPath(const CZRB_String& path) {
    const std::string full(GetFullPathFromPath(path).GetStringC());
    const std::size_t slash = full.rfind('\\');
    if (slash == std::string::npos) {
        return CZRB_String();
    }
    return CZRB_String(full.data(), static_cast<unsigned int>(slash + 1));
}
