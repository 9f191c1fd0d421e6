#include "platform/compiled_file.h"

#include <zlib.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <fstream>

#include "platform/atomic_file.h"
#include "platform/zo_exception.h"

struct ZoCompiledFile::Folder {
    bool named = false;
    uint32_t name = 0;
    std::string data;
    // Cursors point only at ancestors of the folder being written, and only
    // the current folder's children grow, so a plain vector keeps them valid.
    std::vector<Folder> children;
};

struct ZoCompiledFile::Cursor {
    Folder* folder = nullptr;
    // The empty folder entered when an optional folder is missing on read.
    std::unique_ptr<Folder> absent;
    uint32_t readPosition = 0;
    size_t nextUnnamed = 0;
    size_t nextName = 0;
};

namespace {

ZoCompiledFile::Cursor MakeCursor(ZoCompiledFile::Folder* folder) {
    ZoCompiledFile::Cursor cursor;
    cursor.folder = folder;
    return cursor;
}

constexpr char kMagic[8] = {'Z', 'o', 'C', 'F', '\r', '\n', '\x1a', '\n'};
constexpr uint32_t kLayoutRevision = 1;
constexpr size_t kHeaderBytes = 24;
constexpr size_t kChecksumBytes = 4;
// kind byte, name, stream length, child count
constexpr size_t kMinFolderRecordBytes = 1 + 4 + 4 + 4;

uint32_t Crc32(const uint8_t* data, size_t length) {
    uLong crc = crc32(0L, Z_NULL, 0);
    // zlib takes uInt lengths; feed it in pieces so large files stay correct.
    while (length > 0) {
        const uInt piece = static_cast<uInt>(std::min<size_t>(length, 1u << 30));
        crc = crc32(crc, data, piece);
        data += piece;
        length -= piece;
    }
    return static_cast<uint32_t>(crc);
}

void PutUInt32(std::string& out, uint32_t value) {
    for (int shift = 0; shift < 32; shift += 8)
        out.push_back(static_cast<char>((value >> shift) & 0xFF));
}

ZoString TagText(uint32_t tag) {
    ZoString text;
    for (int shift = 0; shift < 32; shift += 8) {
        const char c = static_cast<char>((tag >> shift) & 0xFF);
        text.push_back(c >= 0x20 && c < 0x7F ? c : '?');
    }
    return text;
}

[[noreturn]] void Damaged(const char* why) {
    throw ZoException(ZoFormat("The file is damaged (%s)", why));
}

/// Bounds-checked little-endian reads over the validated body.
class ByteReader {
  public:
    explicit ByteReader(std::span<const uint8_t> bytes) : bytes_(bytes) {}

    size_t Remaining() const noexcept { return bytes_.size() - position_; }

    uint8_t UInt8() {
        Need(1);
        return bytes_[position_++];
    }

    uint32_t UInt32() {
        Need(4);
        uint32_t value = 0;
        for (int i = 0; i < 4; ++i)
            value |= static_cast<uint32_t>(bytes_[position_ + i]) << (8 * i);
        position_ += 4;
        return value;
    }

    std::string_view Bytes(size_t length) {
        Need(length);
        const auto* start = reinterpret_cast<const char*>(bytes_.data() + position_);
        position_ += length;
        return {start, length};
    }

  private:
    void Need(size_t length) const {
        if (length > Remaining())
            Damaged("a folder runs past the end");
    }

    std::span<const uint8_t> bytes_;
    size_t position_ = 0;
};

class TreeParser {
  public:
    explicit TreeParser(ByteReader& reader) : reader_(reader) {}

    void Parse(ZoCompiledFile::Folder& folder, uint32_t depth) {
        if (depth > ZoCompiledFileLimits::kMaxDepth)
            Damaged("folders nest too deeply");
        const uint8_t kind = reader_.UInt8();
        if (kind > 1)
            Damaged("unknown folder kind");
        folder.named = kind == 1;
        folder.name = reader_.UInt32();
        if (!folder.named && folder.name != 0)
            Damaged("an unnamed folder carries a name");
        folder.data = reader_.Bytes(reader_.UInt32());
        const uint32_t childCount = reader_.UInt32();
        // Each child needs a minimum record, so a count the data cannot hold
        // is rejected before anything is allocated for it.
        if (childCount > reader_.Remaining() / kMinFolderRecordBytes)
            Damaged("a folder claims more children than the file holds");
        folderCount_ += childCount;
        if (folderCount_ > ZoCompiledFileLimits::kMaxFolders)
            Damaged("too many folders");
        folder.children.resize(childCount);
        for (auto& child : folder.children)
            Parse(child, depth + 1);
        CheckNamesUnique(folder);
    }

  private:
    static void CheckNamesUnique(const ZoCompiledFile::Folder& folder) {
        std::vector<uint32_t> names;
        for (const auto& child : folder.children) {
            if (child.named)
                names.push_back(child.name);
        }
        std::sort(names.begin(), names.end());
        if (std::adjacent_find(names.begin(), names.end()) != names.end())
            Damaged("two folders share a name");
    }

    ByteReader& reader_;
    uint64_t folderCount_ = 1;
};

void Serialise(const ZoCompiledFile::Folder& folder, std::string& out) {
    out.push_back(folder.named ? '\x01' : '\x00');
    PutUInt32(out, folder.named ? folder.name : 0);
    PutUInt32(out, static_cast<uint32_t>(folder.data.size()));
    out += folder.data;
    PutUInt32(out, static_cast<uint32_t>(folder.children.size()));
    for (const auto& child : folder.children)
        Serialise(child, out);
}

}  // namespace

ZoCompiledFile::ZoCompiledFile(uint32_t typeTag, uint32_t version)
    : typeTag_(typeTag), version_(version), root_(std::make_unique<Folder>()) {}

ZoCompiledFile::ZoCompiledFile(std::filesystem::path path, uint32_t typeTag, uint32_t version)
    : path_(std::move(path)),
      typeTag_(typeTag),
      version_(version),
      root_(std::make_unique<Folder>()) {}

ZoCompiledFile::~ZoCompiledFile() = default;
ZoCompiledFile::ZoCompiledFile(ZoCompiledFile&&) noexcept = default;
ZoCompiledFile& ZoCompiledFile::operator=(ZoCompiledFile&&) noexcept = default;

ZoCompiledFile ZoCompiledFile::FromBytes(std::span<const uint8_t> bytes, uint32_t typeTag) {
    ZoCompiledFile file(typeTag, 0);
    file.LoadFrom(bytes);
    file.open_ = true;
    file.writing_ = false;
    file.ResetCursor();
    return file;
}

ZoCompiledFile ZoCompiledFile::FromBytes(std::string_view bytes, uint32_t typeTag) {
    return FromBytes(std::span(reinterpret_cast<const uint8_t*>(bytes.data()), bytes.size()),
                     typeTag);
}

void ZoCompiledFile::LoadFrom(std::span<const uint8_t> bytes) {
    if (bytes.size() < kHeaderBytes + kChecksumBytes ||
        std::memcmp(bytes.data(), kMagic, sizeof kMagic) != 0) {
        throw ZoException("The file is not a Vimbo project file");
    }
    if (bytes.size() > ZoCompiledFileLimits::kMaxFileBytes)
        throw ZoException("The file is too large to be a Vimbo project file");
    ByteReader header(bytes.first(kHeaderBytes));
    header.Bytes(sizeof kMagic);
    if (header.UInt32() != kLayoutRevision)
        throw ZoException("The file was written by a newer version of Vimbo");
    const uint32_t tag = header.UInt32();
    if (tag != typeTag_) {
        throw ZoException(ZoFormat("The file holds '%s' data, not '%s'", TagText(tag).c_str(),
                                   TagText(typeTag_).c_str()));
    }
    const uint32_t version = header.UInt32();
    const uint32_t bodyLength = header.UInt32();
    if (bodyLength != bytes.size() - kHeaderBytes - kChecksumBytes)
        Damaged(bodyLength > bytes.size() ? "it is truncated" : "its length is wrong");
    const size_t checked = kHeaderBytes + bodyLength;
    ByteReader trailer(bytes.subspan(checked));
    if (trailer.UInt32() != Crc32(bytes.data(), checked))
        Damaged("checksum mismatch");

    ByteReader body(bytes.subspan(kHeaderBytes, bodyLength));
    auto root = std::make_unique<Folder>();
    TreeParser(body).Parse(*root, 0);
    if (root->named)
        Damaged("the root folder carries a name");
    if (body.Remaining() != 0)
        Damaged("data after the last folder");
    root_ = std::move(root);
    version_ = version;
}

std::string ZoCompiledFile::ToBytes() const {
    std::string out(kMagic, sizeof kMagic);
    PutUInt32(out, kLayoutRevision);
    PutUInt32(out, typeTag_);
    PutUInt32(out, version_);
    PutUInt32(out, 0);  // body length, patched below
    Serialise(*root_, out);
    const size_t bodyLength = out.size() - kHeaderBytes;
    if (out.size() + kChecksumBytes > ZoCompiledFileLimits::kMaxFileBytes)
        throw ZoException("The project is too large to save");
    for (int i = 0; i < 4; ++i)
        out[kHeaderBytes - 4 + i] = static_cast<char>((bodyLength >> (8 * i)) & 0xFF);
    PutUInt32(out, Crc32(reinterpret_cast<const uint8_t*>(out.data()), out.size()));
    return out;
}

bool ZoCompiledFile::Open(bool forWriting, bool create) {
    open_ = false;
    cursors_.clear();
    if (forWriting) {
        std::error_code error;
        if (path_ && !create && !std::filesystem::exists(*path_, error))
            return false;
        root_ = std::make_unique<Folder>();
        folderCount_ = 1;
    } else if (path_) {
        std::error_code error;
        const auto size = std::filesystem::file_size(*path_, error);
        if (error)
            return false;
        if (size > ZoCompiledFileLimits::kMaxFileBytes)
            throw ZoException("The file is too large to be a Vimbo project file");
        std::ifstream in(*path_, std::ios::binary);
        if (!in)
            return false;
        std::vector<uint8_t> bytes(size);
        if (!in.read(reinterpret_cast<char*>(bytes.data()), static_cast<std::streamsize>(size)))
            return false;
        LoadFrom(bytes);
    }
    open_ = true;
    writing_ = forWriting;
    ResetCursor();
    return true;
}

void ZoCompiledFile::Close() {
    if (!open_)
        return;
    open_ = false;
    cursors_.clear();
    if (writing_ && path_)
        ZoWriteFileAtomically(*path_, ToBytes());
}

void ZoCompiledFile::ResetCursor() {
    cursors_.clear();
    cursors_.push_back(MakeCursor(root_.get()));
}

ZoCompiledFile::Cursor& ZoCompiledFile::Current() {
    if (!open_)
        throw ZoException("The project file is not open");
    return cursors_.back();
}

const ZoCompiledFile::Cursor& ZoCompiledFile::Current() const {
    if (!open_)
        throw ZoException("The project file is not open");
    return cursors_.back();
}

size_t ZoCompiledFile::GetDepth() const noexcept {
    return cursors_.empty() ? 0 : cursors_.size() - 1;
}

void ZoCompiledFile::WriteData(const void* data, uint32_t length) {
    Cursor& cursor = Current();
    if (!writing_)
        throw ZoException("The project file is open for reading only");
    if (cursor.folder->data.size() + length > ZoCompiledFileLimits::kMaxFileBytes)
        throw ZoException("The project is too large to save");
    cursor.folder->data.append(static_cast<const char*>(data), length);
}

void ZoCompiledFile::ReadData(void* data, uint32_t length) {
    Cursor& cursor = Current();
    if (cursor.folder->data.size() - cursor.readPosition < length) {
        throw ZoFileNonFatalException(
            ZoFormat("Tried to read %u bytes with %u left in the folder", length,
                     static_cast<uint32_t>(cursor.folder->data.size() - cursor.readPosition)));
    }
    // memcpy may not be handed the null pointer of an empty buffer.
    if (length > 0)
        std::memcpy(data, cursor.folder->data.data() + cursor.readPosition, length);
    cursor.readPosition += length;
}

void ZoCompiledFile::ReadData(void* data, uint32_t length, uint32_t& got) {
    Cursor& cursor = Current();
    got = std::min<uint32_t>(
        length, static_cast<uint32_t>(cursor.folder->data.size() - cursor.readPosition));
    if (got > 0)
        std::memcpy(data, cursor.folder->data.data() + cursor.readPosition, got);
    cursor.readPosition += got;
}

void ZoCompiledFile::DescendFolder(const uint32_t* name, bool forWriting, bool mustExist) {
    Cursor& cursor = Current();
    Folder& parent = *cursor.folder;
    if (forWriting) {
        if (!writing_)
            throw ZoException("The project file is open for reading only");
        if (cursors_.size() > ZoCompiledFileLimits::kMaxDepth)
            throw ZoException("Folders nest too deeply to save");
        auto existing = name ? std::find_if(parent.children.begin(), parent.children.end(),
                                            [&](const Folder& child) {
                                                return child.named && child.name == *name;
                                            })
                             : parent.children.end();
        if (existing == parent.children.end()) {
            if (++folderCount_ > ZoCompiledFileLimits::kMaxFolders)
                throw ZoException("The project has too many folders to save");
            parent.children.push_back(Folder{name != nullptr, name ? *name : 0, {}, {}});
            existing = parent.children.end() - 1;
        }
        cursors_.push_back(MakeCursor(&*existing));
        return;
    }

    Folder* found = nullptr;
    if (name) {
        for (auto& child : parent.children) {
            if (child.named && child.name == *name)
                found = &child;
        }
    } else {
        for (; cursor.nextUnnamed < parent.children.size() && !found; ++cursor.nextUnnamed) {
            if (!parent.children[cursor.nextUnnamed].named)
                found = &parent.children[cursor.nextUnnamed];
        }
    }
    if (found) {
        cursors_.push_back(MakeCursor(found));
        return;
    }
    if (mustExist) {
        throw ZoFileNonFatalException(name ? ZoFormat("Folder %u is missing", *name)
                                           : ZoString("A folder is missing"));
    }
    Cursor empty;
    empty.absent = std::make_unique<Folder>();
    empty.folder = empty.absent.get();
    cursors_.push_back(std::move(empty));
}

void ZoCompiledFile::Ascend() {
    Current();
    if (cursors_.size() == 1)
        throw ZoException("Ascend without a matching descend");
    cursors_.pop_back();
}

bool ZoCompiledFile::GetFirstFolderName(uint32_t& name) {
    Current().nextName = 0;
    return GetNextFolderName(name);
}

bool ZoCompiledFile::GetNextFolderName(uint32_t& name) {
    Cursor& cursor = Current();
    const auto& children = cursor.folder->children;
    while (cursor.nextName < children.size()) {
        const Folder& child = children[cursor.nextName++];
        if (child.named) {
            name = child.name;
            return true;
        }
    }
    return false;
}

bool ZoCompiledFile::IsFolderAvailable(uint32_t name) {
    const auto& children = Current().folder->children;
    return std::any_of(children.begin(), children.end(),
                       [name](const Folder& child) { return child.named && child.name == name; });
}

uint32_t ZoCompiledFile::GetVersionNumber() const {
    return version_;
}

uint32_t ZoCompiledFile::GetFolderSize() const {
    return static_cast<uint32_t>(Current().folder->data.size());
}

void ZoCompiledFile::Seek(int64_t offset, int origin) {
    Cursor& cursor = Current();
    const auto size = static_cast<int64_t>(cursor.folder->data.size());
    int64_t base = 0;
    if (origin == SEEK_CUR)
        base = cursor.readPosition;
    else if (origin == SEEK_END)
        base = size;
    else if (origin != SEEK_SET)
        throw ZoException("Unknown seek origin");
    const int64_t target = base + offset;
    if (target < 0 || target > size)
        throw ZoFileNonFatalException("Seek outside the folder");
    cursor.readPosition = static_cast<uint32_t>(target);
}
