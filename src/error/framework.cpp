// The framework's exception classes (zelvan/framework.h).
#include <zelvan/framework.h>

#include <cstdio>

namespace {

constexpr std::uint32_t kNotSerialisable = 0xFFFF;

// Copies `text` into the buffer, cut to fit, and always closes it with a zero.
void CopyMessage(const char* text, char* buffer, unsigned int bufferSize,
                 unsigned int* helpContext) {
  if (helpContext != nullptr) *helpContext = 0;
  if (buffer == nullptr || bufferSize == 0) return;
  unsigned int length = 0;
  while (length + 1 < bufferSize && text[length] != '\0') {
    buffer[length] = text[length];
    ++length;
  }
  buffer[length] = '\0';
}

}  // namespace

const CRuntimeClass CObject::classCObject = {"CObject", sizeof(CObject), kNotSerialisable, nullptr,
                                             nullptr};
const CRuntimeClass CException::classCException = {
    "CException", sizeof(CException), kNotSerialisable, nullptr, &CObject::classCObject};
const CRuntimeClass CMemoryException::classCMemoryException = {
    "CMemoryException", sizeof(CMemoryException), kNotSerialisable, nullptr,
    &CException::classCException};
const CRuntimeClass CFileException::classCFileException = {"CFileException", sizeof(CFileException),
                                                           kNotSerialisable, nullptr,
                                                           &CException::classCException};

bool CRuntimeClass::IsDerivedFrom(const CRuntimeClass* base) const noexcept {
  for (const CRuntimeClass* c = this; c != nullptr; c = c->baseClass) {
    if (c == base) return true;
  }
  return false;
}

const CRuntimeClass* CObject::GetRuntimeClass() const noexcept {
  return &classCObject;
}
void CObject::Serialize(void* /*archive*/) {}
void CObject::AssertValid() const {}
void CObject::Dump(void* /*context*/) const {}

bool CObject::IsKindOf(const CRuntimeClass* runtimeClass) const noexcept {
  return GetRuntimeClass()->IsDerivedFrom(runtimeClass);
}

const CRuntimeClass* CException::GetRuntimeClass() const noexcept {
  return &classCException;
}

void CException::Delete() {
  if (m_bAutoDelete != 0) delete this;
}

int CException::GetErrorMessage(char* buffer, unsigned int bufferSize, unsigned int* helpContext) {
  CopyMessage("", buffer, bufferSize, helpContext);
  return 0;
}

int CException::ReportError(unsigned int /*type*/, unsigned int /*messageId*/) {
  char message[128];
  const bool known = GetErrorMessage(message, sizeof message) != 0;
  std::fprintf(stderr, "%s: %s\n", GetRuntimeClass()->className,
               known ? message : "no further information");
  return 1;
}

const CRuntimeClass* CMemoryException::GetRuntimeClass() const noexcept {
  return &classCMemoryException;
}

int CMemoryException::GetErrorMessage(char* buffer, unsigned int bufferSize,
                                      unsigned int* helpContext) {
  CopyMessage("Out of memory.", buffer, bufferSize, helpContext);
  return 1;
}

const CRuntimeClass* CFileException::GetRuntimeClass() const noexcept {
  return &classCFileException;
}

int CFileException::GetErrorMessage(char* buffer, unsigned int bufferSize,
                                    unsigned int* helpContext) {
  CopyMessage("A file operation failed.", buffer, bufferSize, helpContext);
  return 1;
}

void AfxThrowMemoryException() {
  static CMemoryException shared(false);
  throw &shared;
}

void AfxThrowFileException(int cause, std::int32_t osError, const char* /*fileName*/) {
  throw new CFileException(cause, osError);
}
