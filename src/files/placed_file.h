// Files that take their place whole or not at all.
#pragma once

#include <string>

namespace zentor {

// Checks that a file may be put at `target`: ZT_FILE_NOT_EXIST (something other than a file is there), ZT_FILE_CREATE
// (the file that is there cannot be written, or is one although the target is to be new), ZT_OUTPUT_FOLDER (its folder
// does not exist). Returns the folder.
std::string CheckTarget(const std::string& target, bool isNew);

// Makes an empty file in `folder` with a name of its own that nobody can guess and that ends in ".vkjson". Where the
// system can tell, nobody else may read it. Code ZT_TEMP_FILE.
std::string CreateUniqueFile(const std::string& folder);

// A file that is made beside its target, and then put in the target's place. Whatever it has done is undone at the end
// of its life, unless it is kept: the file is gone, and what was there before is there again.
class PlacedFile {
public:
    // An empty file beside `target`, an absolute path. Codes of CheckTarget and CreateUniqueFile.
    PlacedFile(std::string target, bool isNew);
    ~PlacedFile();
    PlacedFile(const PlacedFile&) = delete;
    PlacedFile& operator=(const PlacedFile&) = delete;

    // Where it is now.
    const std::string& Path() const { return path_; }
    // Renames it, or exchanges it with the file that is at the target, once its bytes are safe on disk; it then has the
    // permissions of that file, or those of any new one. It must not be open. Codes ZT_FILE_CREATE (a file has come
    // although the target is to be new), ZT_TEMP_FILE, ZT_GENERAL, ZT_RENAME, ZT_FILE_WRITE.
    void Place();
    // It stays; what was there before goes.
    void Keep() noexcept;

private:
    std::string target_;
    bool isNew_;
    std::string path_;
    std::string replacedPath_;  // where the file that was there before is now; empty when there is none
    bool isKept_ = false;
};

}  // namespace zentor
