#pragma once

#include <QString>

#include <utility>
#include <variant>

namespace varnel {

/// What kind of failure it was; callers choose an exit status or a next step by it.
enum class ErrorCode {
    NotFound, ///< no such file, key or row
    NotPermitted, ///< the system refused (rights, read-only file system, link out of the home)
    NotAFile, ///< a folder, FIFO, socket or device stands where a file is expected
    TooBig, ///< the file is past the bound of what was to be done with it
    Unloadable, ///< the file is there, but is no whole, valid property list with a dictionary
    Invalid, ///< the caller's value is out of its kind
    Failed, ///< any other failure; the text tells
};

struct Error {
    ErrorCode code = ErrorCode::Failed;
    QString text; ///< one line for a person; names the file where there is one
};

/// A value or the error that stands in its place.
template <typename T> class [[nodiscard]] Result {
public:
    Result(T value) : state(std::in_place_index<0>, std::move(value)) { }
    Result(Error error) : state(std::in_place_index<1>, std::move(error)) { }

    [[nodiscard]] bool ok() const { return state.index() == 0; }
    explicit operator bool() const { return ok(); }

    /// Only when ok().
    [[nodiscard]] const T &value() const & { return std::get<0>(state); }
    [[nodiscard]] T &value() & { return std::get<0>(state); }
    [[nodiscard]] T value() && { return std::get<0>(std::move(state)); }

    /// Only when not ok().
    [[nodiscard]] const Error &error() const { return std::get<1>(state); }

private:
    std::variant<T, Error> state;
};

template <> class [[nodiscard]] Result<void> {
public:
    Result() = default;
    Result(Error error) : state(std::in_place_index<1>, std::move(error)) { }

    [[nodiscard]] bool ok() const { return state.index() == 0; }
    explicit operator bool() const { return ok(); }
    [[nodiscard]] const Error &error() const { return std::get<1>(state); }

private:
    std::variant<std::monostate, Error> state;
};

} // namespace varnel
