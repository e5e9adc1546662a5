// Every failure that the library reports: code and message key, in one place.
//
// A key is "$$$/ZTError/", a path, "=" and the English text; the part before "=" is what dictionaries are searched for.
// Keys and texts are part of the contract with hosts, odd spellings included: a few keys lack the slash after the
// prefix, some texts have a blank too many or say the opposite of what happened, and one key can have several texts.
#pragma once

#include <cstdint>

#include "zentor/error_codes.h"

namespace zentor {

struct ErrorEntry {
    std::uint32_t code;
    const char* key;
};

// clang-format off
#define ZT_ERROR_TABLE(X) \
    X(kInvalidPointer, ZT_INVALID_POINTER, "InvalidPointer=Invalid pointer to ^1.") \
    X(kBadUtf, ZT_INVALID_POINTER, "BadUTF=Bad UTF-32 - out of range.") \
    X(kBadUtf16Low, ZT_INVALID_POINTER, "BadUTF16Low=Bad UTF-16 - leading low surrogate") \
    X(kBadUtf16Missing, ZT_INVALID_POINTER, "BadUTF16Missing=Bad UTF-16 - missing low surrogate") \
    X(kBadUnicode, ZT_INVALID_POINTER, "BadUnicode=Incomplete Unicode at end of string") \
    X(kBadCodePoint, ZT_INVALID_POINTER, "BadCodePoint=Bad UTF-32 - surrogate code point") \
    X(kEmptyDataPathString, ZT_INVALID_POINTER, "EmptyDataPathString=Empty ZT_DataPath string.") \
    X(kZeroScaleValue, ZT_INVALID_POINTER, "InvalidZTTime/ZeroScaleValue=scale value cannot be zero for parameter ^1.") \
    X(kInvalidFilePath, ZT_INVALID_FILE_PATH, "InvalidFilePath=Input file path is NULL.") \
    X(kFilePathTooLarge, ZT_FILE_PATH_TOO_LARGE, "FilePathTooLarge=Input file path length is greater than the supported file path length.") \
    X(kFileNotExist, ZT_FILE_NOT_EXIST, "FileNotExist=File not exist at input path:^1.") \
    X(kNotAFile, ZT_FILE_NOT_EXIST, "File_IO/NotAFile=^1, path exists but is not a file.") \
    X(kCorruptFile, ZT_FILE_STAT, "FileMapper/CorruptFile=Unable to stat input file, probably file is corrupt.") \
    X(kFailureOpeningFile, ZT_FILE_OPEN, "FileMapper/FailureOpeningFile=Unable to open input file.") \
    X(kOpenFailure, ZT_FILE_OPEN, "Failure1=^1, failure.") \
    X(kCreateFile, ZT_FILE_CREATE, "File_IO/CreateFile=^1, Cannot create file.") \
    X(kCloseFile, ZT_FILE_CLOSE, "File_IO/CloseFile=^1, Cannot close file.") \
    X(kDeleteFile, ZT_FILE_DELETE, "File_IO/DeleteFile=^1, Cannot delete file.") \
    X(kSeekFileMode, ZT_FILE_SEEK, "File_IO/SeekFileMode=^1, Invalid Seek mode.") \
    X(kSeekFailure, ZT_FILE_SEEK, "Failure=^1, ^2 failure.") \
    X(kLengthFailure, ZT_FILE_READ, "File_IO/Length=^1, failure.") \
    X(kReadLargeRequest, ZT_FILE_READ, "File_IO/ReadFile/LargeRequest=^1, request too large.") \
    X(kReadFailure, ZT_FILE_READ, "Failure=^1, ^2 failure.") \
    X(kConvertPath, ZT_PATH_CONVERSION, "File_IO/ConvertPath=^1, Cannot convert path.") \
    X(kFilePermission, ZT_FILE_PERMISSION, "File_IO/FilePermission=^1, file permission error") \
    X(kTempDirectory, ZT_TEMP_FOLDER, "File_IO/TempDirectory=^1, Cannot find temp file directory") \
    X(kTempDirNotFound, ZT_TEMP_FOLDER, "TempFileHandler/TempDirNotFound=Unable to find directory for temporary file.") \
    X(kSwapData, ZT_TEMP_FILE, "File_IO/SwapData=^1, Cannot create temp file path.") \
    X(kTempFile, ZT_TEMP_FILE, "File_IO/TempFile=^1, Cannot find temp file name") \
    X(kFailureOpeningTempFile, ZT_TEMP_FILE, "TempFileHandler/FailureOpeningTempFile=Unable to open temporary file.") \
    X(kTempFileNameCopyError, ZT_TEMP_FILE, "TempFileHandler/TempFileNameCopyError=Cannot copy temp file name to temp file path.") \
    X(kTempFileNameError, ZT_TEMP_FILE, "TempFileHandler/TempFileNameError=Cannot find temp file name.") \
    X(kTempFileFailure, ZT_TEMP_FILE, "Failure=^1, ^2 failure.") \
    X(kOpenFolder, ZT_FOLDER_OPEN, "File_IO/OpenFolder=^1,  path is not a folder.") \
    X(kOpenFolderFailure, ZT_FOLDER_OPEN, "Failure=^1, ^2 failure.") \
    X(kCloseFolderFailure, ZT_FOLDER_CLOSE, "Failure=^1, ^2 failure.") \
    X(kAssertionFailure, ZT_ASSERTION, "AssertionFailure=Assertion failure:^1.") \
    X(kClientApisNotSet, ZT_GENERAL, "ClientAPIsNotSet=Client APIs not set.") \
    X(kCannotCreateParserObject, ZT_GENERAL, "CannotCreateParserObject=Unable to create VKJSON parser object.") \
    X(kFetchDynamicSampleFailure, ZT_GENERAL, "FetchDynamicSampleFailure=Unable to fetch dynamic samples for SampleId:^1.") \
    X(kFailureFileMapping, ZT_GENERAL, "FileMapper/FailureFileMapping=Unable to read file in memory.") \
    X(kRenameOntoFile, ZT_GENERAL, "File_IO/Rename=^1, New path does not exists.") \
    X(kInvalidInputTime, ZT_GENERAL, "ZTUtils/InvalidInputTime=^1 : invalid left or right time string.") \
    X(kFailureWritingTempFile, ZT_GENERAL, "TempFileHandler/FailureWritingTempFile=Unable to write in temporary file.") \
    X(kRenamePath, ZT_RENAME, "File_IO/Rename=^1, GetWidePath failure.") \
    X(kRenameFailure, ZT_RENAME, "File_IO/Rename=^1, Rename failure.") \
    X(kUnknownException, ZT_UNKNOWN, "UnknownExceptionCaught=Unknown exception occurred.") \
    X(kFileFormatNotSupported, ZT_FORMAT_NOT_SUPPORTED, "FileFormatNotSupported=File Format Not Supported.") \
    X(kNoFileOpened, ZT_NO_FILE_OPENED, "NoFileOpened=No file is opened by Zentor.") \
    X(kInvalidFileHandler, ZT_INVALID_FILE_HANDLER, "InvalidFileHandler=File handler is not created by this Zentor instance.") \
    X(kMissingRequiredProperty, ZT_MISSING_PROPERTY, "VKJSONParser/MissingRequiredProperty=Unable to find mandatory property:^1.") \
    X(kMissingRequiredPropertyAtPath, ZT_MISSING_PROPERTY, "VKJSONParser/MissingRequiredPropertyAtPath=Unable to find mandatory property:^1 at ^2.") \
    X(kInvalidTopLevelProperty, ZT_TOP_LEVEL_PROPERTY, "VKJSONParser/InvalidTopLevelProperty=Invalid top level property. ^1 not defined as a top level property in VKJSON schema version ^2.") \
    X(kDependentPropertyNotFound, ZT_DEPENDENT_PROPERTY, "VKJSONParser/DependentPropertyNotFound=^1 must be present before ^2 in VKJSON file.") \
    X(kInvalidInfoBefore, ZT_DEPENDENT_PROPERTY, "VKJSONParser/InvalidInfo=^1 can be present if and only if ^2 is set to ^3.") \
    X(kFoundUnrecognisedKey, ZT_INVALID_JSON, "VKJSONParser/FoundUnrecognisedKey=Invalid VKJSON key : ^1.") \
    X(kInvalidJson, ZT_INVALID_JSON, "VKJSONParser/InvalidJSON=Parsing error:^1, Invalid JSON.") \
    X(kInvalidJsonObject, ZT_INVALID_JSON, "VKJSONParser/InvalidJSONObject=Parsing error:^1, Invalid JSON Object.") \
    X(kInvalidKeyMissingQuotes, ZT_INVALID_JSON, "VKJSONParser/InvalidKeyMissingQuotes=Unable to find enclosing quotes for Vkjson key.") \
    X(kInvalidPropertyValueMissingQuotes, ZT_INVALID_JSON, "VKJSONParser/InvalidPropertyValueMissingQuotes=Unable to find enclosing quotes for property value:^1.") \
    X(kInvalidPropertyMissingColon, ZT_INVALID_JSON, "VKJSONParser/InvalidPropertyMissingColon=Unable to find Colon(:) in between key and value for property:^1.") \
    X(kInvalidPropertyMissingComma, ZT_INVALID_JSON, "VKJSONParser/InvalidPropertyMissingCommaOrClosingBracket=Unable to find Comma or Closing bracket after property:^1.") \
    X(kInvalidPropertyTypeSyntax, ZT_INVALID_JSON, "VKJSONParser/InvalidPropertyType=Invalid ^1 type, expected type:^2.") \
    X(kExponentTooBig, ZT_INVALID_JSON, "VKJSONParser/MIssingExponent=Number too big to be stored in double.") \
    X(kMissingExponent, ZT_INVALID_JSON, "VKJSONParser/MissingExponent=Miss exponent in number") \
    X(kMissingFractionPart, ZT_INVALID_JSON, "VKJSONParser/MissingFractionPart=Missing fraction part in number") \
    X(kMissingRequiredProperties, ZT_INVALID_JSON, "VKJSONParser/MissingRequiredProperties=Unable to find mandatory properties : ^1.") \
    X(kNumberTooBig, ZT_INVALID_JSON, "VKJSONParser/NumberTooBig=Number too big to be stored in double.") \
    X(kOpeningBracketNotFound, ZT_INVALID_JSON, "VKJSONParser/OpeningBracketNotFound=Unable to find VKJSON opening '{'.") \
    X(kTooDeepNesting, ZT_INVALID_JSON, "VKJSONParser/TooDeepNesting=ZT does not support VKJSON dataGroup with nesting more than ^1") \
    X(kIntermediateNodeNotGroupNode, ZT_DATA_PATH, "InvalidZTDataPath/IntermediateNodeNotGroupNode=Node at path item:^1 is not of type dataGroup. All intermediate nodes must be of type dataGroup.") \
    X(kInvalidIndex, ZT_DATA_PATH, "InvalidZTDataPath/InvalidIndex=Invalid node index, ^1 child nodes present for node at path item :^2. Input index : ^3.") \
    X(kInvalidNodeType, ZT_DATA_PATH, "InvalidZTDataPath/InvalidNodeType=^1 not found at input path, Found node type: ^2.") \
    X(kLastNodeNotGroupNode, ZT_DATA_PATH, "InvalidZTDataPath/LastNodeNotGroupNode=Leaf node is not a group node.") \
    X(kMatchNameNotFound, ZT_DATA_PATH, "InvalidZTDataPath/MatchNameNotFound=No node found with match name : ^1.") \
    X(kMatchNameNotMatching, ZT_DATA_PATH, "InvalidZTDataPath/MatchNameNotMatching=^1:Match name found for child Node at index ^2 for path item ^3,Input match name:^4.") \
    X(kMissingBothIndexAndMatchName, ZT_DATA_PATH, "InvalidZTDataPath/MissingBothIndexAndMatchName=Either index or match name must be present, both are missing at path item ^1.") \
    X(kMissingOpeningBracket, ZT_DATA_PATH, "InvalidZTDataPath/MissingOpeningOrClosingBracket=Missing ^1 at or after index :^2.") \
    X(kMissingRootInfo, ZT_DATA_PATH, "InvalidZTDataPath/MissingRootInfo=Missing ZT_DataPath ROOT_INDEX or ROOT_MATCHNAME. Path must start with ROOT_INDEX or ROOT_MATCHNAME") \
    X(kMemoryNotAvailable, ZT_OUT_OF_MEMORY, "MemoryNotAvailable=Unable to allocate memory.") \
    X(kSampleMemoryNotAvailable, ZT_OUT_OF_MEMORY, "DynamicSample/MemoryNotAvailable=Unable to allocate memory for ^1.") \
    X(kForeignException, ZT_OUT_OF_MEMORY, "UnknownExceptionCaught=Unknown exception occurred.") \
    X(kSampleIdNotFound, ZT_SAMPLE_ID_NOT_FOUND, "SampleData/SampleIdNotFound=Data Outline does not contain any dynamic node for sample id : ^1.") \
    X(kInvalidSampleSetInfo, ZT_SAMPLE_SET_INFO, "SampleData/InvalidSampleSetInfo=Invalid  dynamic node info in data outline for sample set:^1.Calculated sample set size is out of file offset range.") \
    X(kDuplicateSampleId, ZT_DUPLICATE_SAMPLE_ID, "VKJSONParser/DynamicSample/DuplicateSampleId=Duplicate sample id found. Sample Id:^1 is assigned to more than one dynamic node in data outline.") \
    X(kSamplesNotFound, ZT_SAMPLES_NOT_FOUND, "SampleData/SamplesNotFound=No dynamic sample data present for sample id : ^1.") \
    X(kInvalidSampleSetData, ZT_SAMPLE_DATA, "VKJSONParser/DynamicSample/InvalidSampleSetData=Invalid sample set data for sample id:^1. Either information in dataOutline is incorrect or sample set data is malformed.") \
    X(kInvalidPaddedStringLength, ZT_SAMPLE_DATA, "VKJSONParser/InvalidPaddedStringLength=Padded string length cannot be greater than max length.") \
    X(kMissingSampleProperty, ZT_SAMPLE_DATA, "VKJSONParser/MissingRequiredPropertyAtPath=Unable to find mandatory property:^1 at ^2.") \
    X(kInvalidArrayCount, ZT_SAMPLE_DATA, "SampleData/InvalidNumberArrayInvalidArrayCount=Number array does not contains enough elements at ^1.") \
    X(kInvalidSample, ZT_SAMPLE_DATA, "SampleData/InvalidSample=Invalid sample:^1") \
    X(kInvalidSampleTime, ZT_SAMPLE_DATA, "SampleData/InvalidSampleTime=Invalid sample time:^1") \
    X(kInvalidTimeValue, ZT_SAMPLE_DATA, "SampleData/InvalidSampleTime=Invalid time value for :^1.") \
    X(kInvalidTimeValueForId, ZT_SAMPLE_DATA, "SampleData/InvalidSampleTime=Invalid time value for sample id:^1.") \
    X(kInvalidSampleValue, ZT_SAMPLE_DATA, "SampleData/InvalidSampleValue=Invalid sample value:^1") \
    X(kDuplicateMatchName, ZT_DUPLICATE_MATCH_NAME, "VKJSONParser/DuplicateMatchName=Duplicate MatchName:^1 at ^2. MatchName must be unique for every node in \"dataOutline\".") \
    X(kNonSupportedFrameRate, ZT_FRAME_RATE, "VKJSONParser/NonSuppportedFrameRate=Only 29.97 and 59.94 drop frame rate supported.") \
    X(kInvalidMatchName, ZT_MATCH_NAME, "VKJSONParser/InvalidMatchName=Invalid ^1 at ^2. Not following VKJSON guidelines.") \
    X(kInvalidPropertyType, ZT_PROPERTY_TYPE, "VKJSONParser/InvalidPropertyType=Invalid ^1 type, expected type:^2.") \
    X(kInvalidPropertyTypeAtPath, ZT_PROPERTY_TYPE, "VKJSONParser/InvalidPropertyTypeAtPath=Invalid ^1 type, expected type:^2 at ^3.") \
    X(kInvalidSamplePropertyType, ZT_PROPERTY_TYPE, "VKJSONParser/DynamicSample/InvalidPropertyType=Unable to find ^1, Invalid ^2 property, expected type : ^3 in dynamic set with sample id:^4.") \
    X(kInvalidPropertyValueAtPath, ZT_PROPERTY_VALUE, "VKJSONParser/InvalidPropertyValueAtPath=Invalid value for ^1 at ^2, expected:^3.") \
    X(kTopPropertyNotTimeInfo, ZT_PROPERTY_VALUE, "VKJSONParser/InvalidDynamicDataInfo/TopPropertyNotTimeInfo=First property of ^1 must be ^2, found ^3.") \
    X(kSyncTimeAndFrameMissing, ZT_PROPERTY_VALUE, "VKJSONParser/InvalidSyncInfo/BothTSAndFNMissing=Invalid ^1, one of ^2 or ^3 must be present at ^4.") \
    X(kSyncTimeAndFramePresent, ZT_PROPERTY_VALUE, "VKJSONParser/InvalidSyncInfo/BothTSAndFNPPresent=Invalid ^1, only one of ^2 or ^3 can be present at ^4.") \
    X(kMissingClosingBracket, ZT_DATA_PATH_BRACKET, "InvalidZTDataPath/MissingOpeningOrClosingBracket=Missing ^1 at or after index :^2.") \
    X(kInvalidInfo, ZT_CONDITIONAL_PROPERTY, "VKJSONParser/InvalidInfo=^1 can be present if and only if ^2 is set to ^3.") \
    X(kEmptyArray, ZT_EMPTY_ARRAY, "VKJSONParser/EmptyArray=Invalid ^1, expected atleast 1 array item, found 0.") \
    X(kEmptyArrayAtPath, ZT_EMPTY_ARRAY, "VKJSONParser/EmptyArrayAtPath=Invalid ^1, expected atleast 1 array item, found 0 at ^2.") \
    X(kWriterFailure, ZT_WRITER, "WriterFailure=Writer failure.") \
    X(kDynamicNodeNotPresent, ZT_DYNAMIC_NODE_NOT_PRESENT, "VKJSONParser/DynamicSample/DynamicNodeNotPresent=No dynamic data node is present in data outline with sample id:^1.") \
    X(kEmptyFile, ZT_EMPTY_FILE, "FileMapper/EmptyFile=Empty Input file.") \
    X(kWriteLargeRequest, ZT_FILE_WRITE, "File_IO/Write/LargeRequest=^1, request too large.") \
    X(kNoStreamCreated, ZT_NO_STREAM_CREATED, "NoStreamCreated=No stream created by Zentor.") \
    X(kInvalidStream, ZT_INVALID_STREAM, "InvalidStream=VKJSON Stream is not created by this Zentor instance.") \
    X(kDirectoryDoesNotExist, ZT_OUTPUT_FOLDER, "DirectoryDoesNotExists=VKJSON output directory does not exists.") \
    X(kModuleLoadingFailed, ZT_MODULE_LOADING, "ZTPlugin/ModuleLoadingFailed=Can't load module.") \
    X(kPluginLoadFailure, ZT_MODULE_LOADING, "ZTPlugin/PluginLoadFailure=Plugin ^1 not loaded.") \
    X(kPluginNotLoaded, ZT_MODULE_LOADING, "ZTPlugin/PluginNotLoaded=Plugin not loaded.") \
    X(kPluginInitializeFailed, ZT_PLUGIN_INITIALIZE, "ZTPlugin/PluginInitializeFailed=Initialization of plugin with id ^1 failed.") \
    X(kManifestParseFailed, ZT_MANIFEST, "ZTPlugin/ManifestParseFailed=Manifest Parsing Failed.") \
    X(kMandatoryPropertyNotPresent, ZT_MANIFEST, "ZTPlugin/MandatoryPropertyNotPresent=Mandatory property not present.") \
    X(kManifestPropertyType, ZT_MANIFEST_SCHEMA, "ZTPlugin/InvalidPropertyType=Invalid : ^1 type, expected type : ^2.") \
    X(kSchemaViolation, ZT_MANIFEST_SCHEMA, "ZTPlugin/SchemaViolation=Schema violation of Property: ^1.") \
    X(kPluginCheckFileFormat, ZT_CONVERSION, "ZTPlugin/CheckFileFormat=Error in Plugin Check File Format of converter ^1 with id ^2.") \
    X(kInitializeSessionFailed, ZT_CONVERSION, "ZTPlugin/IntialzeSessionFailed=Initialize Session Failed of converter ^1 with id ^2.") \
    X(kTerminatePluginFailed, ZT_CONVERSION, "ZTPlugin/TerminatePluginFailed=Terminate of Plugin with id ^1 failed") \
    X(kQuoteInText, ZT_CONVERSION, "Conversion/QuoteInText=A text has a quotation mark, which the format cannot hold as it is.") \
    X(kBytesInText, ZT_CONVERSION, "Conversion/BytesInText=A text has bytes that are no UTF-8.") \
    X(kExponent, ZT_CONVERSION, "Conversion/Exponent=A number loses zeros of its exponent and becomes another one.") \
    X(kGrowth, ZT_CONVERSION, "Conversion/Growth=The document would be more than 1000 times as large as its input.") \
    X(kBackslashInText, ZT_CONVERSION, "Conversion/BackslashInText=A text has a backslash, which the format cannot hold as it is.") \
    X(kCancelled, ZT_CANCELLED, "Cancelled=Cancelled.") \
    X(kControlCharacterInText, ZT_CONVERSION, "Conversion/ControlCharacterInText=A text has a control character, which the format cannot hold as it is.") \
    X(kConversionFailure, ZT_CONVERSION, "ConversionFailure=File Cannot be converted.") \
    X(kUnknownParameter, ZT_CONVERSION, "Conversion/UnknownParameter=The converter ^1 has no parameter ^2.") \
    X(kPluginConverter, ZT_CONVERSION, "ZTPlugin/Converter=Conversion to VKJSON using converter ^1 with id ^2 failed.") \
    X(kConverterFailure, ZT_CONVERTER_FAILURE, "ConverterFailure=Internal converter failure") \
    X(kWriterFailureStream, ZT_WRITER_STREAM, "WriterFailure=Writer failure.") \
    X(kWriterFailureSyncTime, ZT_WRITER_SYNC_TIME, "WriterFailure=Writer failure.") \
    X(kWriterFailureDimensions, ZT_WRITER_DIMENSIONS, "WriterFailure=Writer failure.") \
    X(kWriterFailureRanges, ZT_WRITER_RANGES, "WriterFailure=Writer failure.")

#define ZT_ERROR_ENTRY(name, code, text) inline constexpr ErrorEntry name{code, "$$$/ZTError/" text};
ZT_ERROR_TABLE(ZT_ERROR_ENTRY)
#undef ZT_ERROR_ENTRY

// These two lack the slash after the prefix; dictionaries know them, if at all, under this spelling.
inline constexpr ErrorEntry kDiskFull{34, "$$$/ZTErrorFile_IO/Write/Failure=^1, Disk Full."};
inline constexpr ErrorEntry kWriteFailure{55, "$$$/ZTErrorFile_IO/Write/Failure=^1,WriteFile failure."};

#define ZT_ERROR_ROW(name, code, text) name,
inline constexpr ErrorEntry kErrorTable[] = {ZT_ERROR_TABLE(ZT_ERROR_ROW) kDiskFull, kWriteFailure};
#undef ZT_ERROR_ROW
#undef ZT_ERROR_TABLE
// clang-format on

}  // namespace zentor
