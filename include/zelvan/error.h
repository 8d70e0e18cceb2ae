/// @file
/// The error model: the codes of the library and the exceptions that carry them.
///
/// Inside the library a failure is an exception, thrown as a pointer that derives
/// from CException, or one of two values (ZelvanLib::BadPolyError for an unusable
/// contour, std::bad_alloc). The engines turn whatever reaches them into a code
/// with ERR::Clear; the flat interface turns every failure into its result 0.
#ifndef ZELVAN_ERROR_H
#define ZELVAN_ERROR_H

#include <zelvan/export.h>
#include <zelvan/framework.h>

#include <cstdint>

/// The library's result codes, and what raises and reads them.
namespace ERR {

/// The library's result codes. The numbers between them are never produced.
enum CODE : std::int32_t {
  OK = 0,        ///< success
  FAIL = 2,      ///< general failure, geometric inconsistency, unrecognised exception
  NOMEM = 5,     ///< out of memory
  PARALLEL = 8,  ///< vec::cross_plane: the line runs parallel to the plane
  FILE = 14,     ///< file error; only the host's own file exceptions give it
  NOEXCEPT = 15  ///< ERR::Clear was called while no exception was in flight
};

/// Throws the exception that stands for `code`: NOMEM a CMemoryException, FILE a
/// CFileException (cause 1, system error -1), every other value, OK included, a
/// CErrException that carries it. All are thrown as pointers.
[[noreturn]] ZELVAN_API void Raise(CODE code);

/// The code of a caught exception, which stays with the caller.
/// @return a CErrException's own code; FILE or NOMEM for the framework's
///         exceptions; FAIL for anything else
[[nodiscard]] ZELVAN_API CODE Ident(CException* e);

/// Releases a caught exception. @return its code, as Ident gives it
ZELVAN_API CODE Delete(CException* e);

/// Asks the exception for its message.
/// @return true when it has one; a CErrException has none
ZELVAN_API bool GetErrorMessage(CException* e, char* buffer, unsigned int bufferSize,
                                unsigned int* helpContext);

/// Inside a catch-all handler: identifies the exception in flight and disposes
/// of it.
/// @return as Delete for a CException pointer; FAIL for anything else; NOEXCEPT
///         when no exception is in flight
ZELVAN_API CODE Clear();

}  // namespace ERR

/// The library's own exception: an ERR::CODE, thrown as a pointer.
class ZELVAN_API CErrException : public CException {
 public:
  /// An exception that carries `errorCode`.
  explicit CErrException(ERR::CODE errorCode) : code(errorCode) {}
  [[nodiscard]] const CRuntimeClass* GetRuntimeClass() const noexcept override;

  ERR::CODE code;  ///< what ERR::Ident and ERR::Delete answer

  static const CRuntimeClass classCErrException;  ///< this class's record
};

/// What the library throws by value.
namespace ZelvanLib {
/// A contour that is no usable polygon. Thrown by value; carries nothing.
class BadPolyError {};
}  // namespace ZelvanLib

#endif
