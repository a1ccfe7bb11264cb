// The settings file of the embedded host: an INI file that its user edits too.
//
// Form: lines `[section]` and `key=value`; blanks around section, key and value do not count, nor
// does the case of ASCII letters in section and key. Lines that begin with `;` or `#`, and lines of
// no known form, are comments. A value in double quotes is taken without them. The first of equal
// sections or keys counts. A byte order mark (UTF-8), CRLF line ends and a missing last line end
// are accepted and kept. Everything that is not the changed line stays byte for byte.
//
// Place: the file that the environment variable ELUGRAPH_SETTINGS names; otherwise
// elugraph/settings.ini under $XDG_CONFIG_HOME, and under ~/.config where that is not an absolute
// path.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace embedded {

// The value of an entry of an INI text; nothing where there is none.
std::optional<std::string> FindEntry(std::string_view text, std::string_view section,
                                     std::string_view key);

// `text` with the entry changed, added (at the end of its section, or in a new section at the end),
// or removed where `value` is nothing. New lines end as the text's first line does.
std::string ChangeEntry(std::string_view text, std::string_view section, std::string_view key,
                        std::optional<std::string_view> value);

// Why the entry cannot be kept in an INI file, or the empty text. Line ends and null bytes fit
// nowhere, `]` not into a section, `=` not into a key, nor a comment mark or `[` at its start;
// neither name may be empty or begin or end with a blank.
std::string EntryFault(std::string_view section, std::string_view key, std::string_view value);

// While off, vsetinifile agrees and changes no file: for programs of which the user expects no
// change of settings. On at the start.
void KeepSettings(bool on);

// Path of the settings file; empty where the environment names no place for it.
std::string SettingsPath();

// Content of the file, empty where it does not exist. On failure nothing, and `fault` tells the
// file and the cause; a file that is no regular text file (null bytes, UTF-16) is refused too.
std::optional<std::string> ReadSettings(const std::string& path, std::string& fault);

// Changes one entry of the file. Writers of several processes take turns (a lock file beside the
// file, path + ".lock"; a writer gives up after 10 s), each on the newest content. The new content
// replaces the old one at once: readers and crashes see the one or the other. A missing file and
// its folders are made. An entry that is as wanted already touches nothing. Returns the empty text,
// or what failed; the file is then unchanged.
std::string WriteSetting(const std::string& path, std::string_view section, std::string_view key,
                         std::optional<std::string_view> value);

}  // namespace embedded
