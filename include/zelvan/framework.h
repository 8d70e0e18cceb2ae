/// @file
/// The exception classes of the host's application framework, in the shape in
/// which the error model (zelvan/error.h) needs them: a root class with run-time
/// class identity, an exception base that is thrown by pointer and releases
/// itself, and the memory and file exceptions with the functions that throw them.
///
/// What holds here: every exception is thrown as a pointer; the one who catches
/// it calls Delete exactly once. An exception on the heap frees itself then; a
/// shared one, as the memory exception, which must be had without memory, stays.
#ifndef ZELVAN_FRAMEWORK_H
#define ZELVAN_FRAMEWORK_H

#include <zelvan/export.h>

#include <cstdint>

class CObject;

/// Run-time class record: one per class, compared by address.
struct CRuntimeClass {
  const char* className;           ///< the class's name, a literal
  std::int32_t objectSize;         ///< sizeof the class
  std::uint32_t schema;            ///< 0xFFFF: not serialisable
  CObject* (*createObject)();      ///< null: cannot be created from the record
  const CRuntimeClass* baseClass;  ///< null for the root

  /// True when this record is `base` or derives from it.
  [[nodiscard]] ZELVAN_API bool IsDerivedFrom(const CRuntimeClass* base) const noexcept;
};

/// Root of the framework's classes. The virtual operations keep this order.
class ZELVAN_API CObject {
 public:
  /// The record of the object's own class.
  [[nodiscard]] virtual const CRuntimeClass* GetRuntimeClass() const noexcept;
  virtual ~CObject() = default;
  virtual void Serialize(void* archive);   ///< does nothing
  virtual void AssertValid() const;        ///< does nothing
  virtual void Dump(void* context) const;  ///< does nothing

  /// True when the object's class is `runtimeClass` or derives from it.
  [[nodiscard]] bool IsKindOf(const CRuntimeClass* runtimeClass) const noexcept;

  static const CRuntimeClass classCObject;  ///< this class's record

 protected:
  CObject() = default;
  CObject(const CObject&) = default;             ///< copied by derived classes alone
  CObject& operator=(const CObject&) = default;  ///< assigned by derived classes alone
};

/// Base of all exceptions that travel as pointers.
class ZELVAN_API CException : public CObject {
 public:
  CException() = default;  ///< released by Delete
  /// @param autoDelete false for an object that Delete must leave alone
  explicit CException(bool autoDelete) : m_bAutoDelete(autoDelete ? 1 : 0) {}

  [[nodiscard]] const CRuntimeClass* GetRuntimeClass() const noexcept override;

  /// Releases the exception; frees it when its auto-delete flag is set.
  void Delete();

  /// Writes the exception's message, cut to `bufferSize` characters with the
  /// closing zero, and a help context of 0 when `helpContext` is given.
  /// @return non-zero when the exception has a message; the base has none and
  ///         writes an empty text.
  virtual int GetErrorMessage(char* buffer, unsigned int bufferSize,
                              unsigned int* helpContext = nullptr);

  /// Shows the message to the user, here on the standard error stream.
  /// @return 1, as for a dismissed message box.
  virtual int ReportError(unsigned int type = 0, unsigned int messageId = 0);

  static const CRuntimeClass classCException;  ///< this class's record

 protected:
  std::int32_t m_bAutoDelete = 1;  ///< not 0: Delete frees the object
};

/// Out of memory. One shared object, so that throwing it needs none.
class ZELVAN_API CMemoryException : public CException {
 public:
  using CException::CException;
  [[nodiscard]] const CRuntimeClass* GetRuntimeClass() const noexcept override;
  int GetErrorMessage(char* buffer, unsigned int bufferSize,
                      unsigned int* helpContext = nullptr) override;
  static const CRuntimeClass classCMemoryException;  ///< this class's record
};

/// A file operation failed.
class ZELVAN_API CFileException : public CException {
 public:
  /// @param cause    1 is the generic cause
  /// @param osError  the operating system's error number, -1 when unknown
  CFileException(int cause, std::int32_t osError) : m_cause(cause), m_lOsError(osError) {}
  [[nodiscard]] const CRuntimeClass* GetRuntimeClass() const noexcept override;
  int GetErrorMessage(char* buffer, unsigned int bufferSize,
                      unsigned int* helpContext = nullptr) override;
  static const CRuntimeClass classCFileException;  ///< this class's record

  int m_cause;              ///< 1 is the generic cause
  std::int32_t m_lOsError;  ///< the operating system's error number, -1 when unknown
};

/// Throws a CMemoryException pointer.
[[noreturn]] ZELVAN_API void AfxThrowMemoryException();

/// Throws a CFileException pointer. The file's name is not kept.
[[noreturn]] ZELVAN_API void AfxThrowFileException(int cause, std::int32_t osError = -1,
                                                   const char* fileName = nullptr);

#endif
