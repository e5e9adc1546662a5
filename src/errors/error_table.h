// Every failure that the library reports: code and message key, in one place.
//
// A key is "$$$/ZTError/", a path, "=" and the English text; the part before "=" is what dictionaries are searched for.
// Keys and texts are part of the contract with hosts, odd spellings included: a few keys lack the slash after the
// prefix, some texts have a blank too many or say the opposite of what happened, and one key can have several texts.
#pragma once

#include <cstdint>

namespace zentor {

struct ErrorEntry {
    std::uint32_t code;
    const char* key;
};

// clang-format off
#define ZT_ERROR_TABLE(X) \
    X(kInvalidPointer, 1, "InvalidPointer=Invalid pointer to ^1.") \
    X(kBadUtf, 1, "BadUTF=Bad UTF-32 - out of range.") \
    X(kBadUtf16Low, 1, "BadUTF16Low=Bad UTF-16 - leading low surrogate") \
    X(kBadUtf16Missing, 1, "BadUTF16Missing=Bad UTF-16 - missing low surrogate") \
    X(kBadUnicode, 1, "BadUnicode=Incomplete Unicode at end of string") \
    X(kBadCodePoint, 1, "BadCodePoint=Bad UTF-32 - surrogate code point") \
    X(kEmptyDataPathString, 1, "EmptyDataPathString=Empty ZT_DataPath string.") \
    X(kZeroScaleValue, 1, "InvalidZTTime/ZeroScaleValue=scale value cannot be zero for parameter ^1.") \
    X(kInvalidFilePath, 2, "InvalidFilePath=Input file path is NULL.") \
    X(kFilePathTooLarge, 3, "FilePathTooLarge=Input file path length is greater than the supported file path length.") \
    X(kFileNotExist, 4, "FileNotExist=File not exist at input path:^1.") \
    X(kNotAFile, 4, "File_IO/NotAFile=^1, path exists but is not a file.") \
    X(kCorruptFile, 5, "FileMapper/CorruptFile=Unable to stat input file, probably file is corrupt.") \
    X(kFailureOpeningFile, 6, "FileMapper/FailureOpeningFile=Unable to open input file.") \
    X(kOpenFailure, 6, "Failure1=^1, failure.") \
    X(kCreateFile, 7, "File_IO/CreateFile=^1, Cannot create file.") \
    X(kCloseFile, 8, "File_IO/CloseFile=^1, Cannot close file.") \
    X(kDeleteFile, 9, "File_IO/DeleteFile=^1, Cannot delete file.") \
    X(kSeekFileMode, 10, "File_IO/SeekFileMode=^1, Invalid Seek mode.") \
    X(kSeekFailure, 10, "Failure=^1, ^2 failure.") \
    X(kLengthFailure, 11, "File_IO/Length=^1, failure.") \
    X(kReadLargeRequest, 11, "File_IO/ReadFile/LargeRequest=^1, request too large.") \
    X(kReadFailure, 11, "Failure=^1, ^2 failure.") \
    X(kConvertPath, 12, "File_IO/ConvertPath=^1, Cannot convert path.") \
    X(kFilePermission, 13, "File_IO/FilePermission=^1, file permission error") \
    X(kTempDirectory, 14, "File_IO/TempDirectory=^1, Cannot find temp file directory") \
    X(kTempDirNotFound, 14, "TempFileHandler/TempDirNotFound=Unable to find directory for temporary file.") \
    X(kSwapData, 15, "File_IO/SwapData=^1, Cannot create temp file path.") \
    X(kTempFile, 15, "File_IO/TempFile=^1, Cannot find temp file name") \
    X(kFailureOpeningTempFile, 15, "TempFileHandler/FailureOpeningTempFile=Unable to open temporary file.") \
    X(kTempFileNameCopyError, 15, "TempFileHandler/TempFileNameCopyError=Cannot copy temp file name to temp file path.") \
    X(kTempFileNameError, 15, "TempFileHandler/TempFileNameError=Cannot find temp file name.") \
    X(kTempFileFailure, 15, "Failure=^1, ^2 failure.") \
    X(kOpenFolder, 16, "File_IO/OpenFolder=^1,  path is not a folder.") \
    X(kOpenFolderFailure, 16, "Failure=^1, ^2 failure.") \
    X(kCloseFolderFailure, 17, "Failure=^1, ^2 failure.") \
    X(kAssertionFailure, 19, "AssertionFailure=Assertion failure:^1.") \
    X(kClientApisNotSet, 21, "ClientAPIsNotSet=Client APIs not set.") \
    X(kCannotCreateParserObject, 21, "CannotCreateParserObject=Unable to create VKJSON parser object.") \
    X(kFetchDynamicSampleFailure, 21, "FetchDynamicSampleFailure=Unable to fetch dynamic samples for SampleId:^1.") \
    X(kFailureFileMapping, 21, "FileMapper/FailureFileMapping=Unable to read file in memory.") \
    X(kRenameOntoFile, 21, "File_IO/Rename=^1, New path does not exists.") \
    X(kInvalidInputTime, 21, "ZTUtils/InvalidInputTime=^1 : invalid left or right time string.") \
    X(kFailureWritingTempFile, 21, "TempFileHandler/FailureWritingTempFile=Unable to write in temporary file.") \
    X(kRenamePath, 22, "File_IO/Rename=^1, GetWidePath failure.") \
    X(kRenameFailure, 22, "File_IO/Rename=^1, Rename failure.") \
    X(kUnknownException, 23, "UnknownExceptionCaught=Unknown exception occurred.") \
    X(kFileFormatNotSupported, 25, "FileFormatNotSupported=File Format Not Supported.") \
    X(kNoFileOpened, 26, "NoFileOpened=No file is opened by Zentor.") \
    X(kInvalidFileHandler, 27, "InvalidFileHandler=File handler is not created by this Zentor instance.") \
    X(kMissingRequiredProperty, 28, "VKJSONParser/MissingRequiredProperty=Unable to find mandatory property:^1.") \
    X(kMissingRequiredPropertyAtPath, 28, "VKJSONParser/MissingRequiredPropertyAtPath=Unable to find mandatory property:^1 at ^2.") \
    X(kInvalidTopLevelProperty, 30, "VKJSONParser/InvalidTopLevelProperty=Invalid top level property. ^1 not defined as a top level property in VKJSON schema version ^2.") \
    X(kDependentPropertyNotFound, 31, "VKJSONParser/DependentPropertyNotFound=^1 must be present before ^2 in VKJSON file.") \
    X(kInvalidInfoBefore, 31, "VKJSONParser/InvalidInfo=^1 can be present if and only if ^2 is set to ^3.") \
    X(kFoundUnrecognisedKey, 32, "VKJSONParser/FoundUnrecognisedKey=Invalid VKJSON key : ^1.") \
    X(kInvalidJson, 32, "VKJSONParser/InvalidJSON=Parsing error:^1, Invalid JSON.") \
    X(kInvalidJsonObject, 32, "VKJSONParser/InvalidJSONObject=Parsing error:^1, Invalid JSON Object.") \
    X(kInvalidKeyMissingQuotes, 32, "VKJSONParser/InvalidKeyMissingQuotes=Unable to find enclosing quotes for Vkjson key.") \
    X(kInvalidPropertyValueMissingQuotes, 32, "VKJSONParser/InvalidPropertyValueMissingQuotes=Unable to find enclosing quotes for property value:^1.") \
    X(kInvalidPropertyMissingColon, 32, "VKJSONParser/InvalidPropertyMissingColon=Unable to find Colon(:) in between key and value for property:^1.") \
    X(kInvalidPropertyMissingComma, 32, "VKJSONParser/InvalidPropertyMissingCommaOrClosingBracket=Unable to find Comma or Closing bracket after property:^1.") \
    X(kInvalidPropertyTypeSyntax, 32, "VKJSONParser/InvalidPropertyType=Invalid ^1 type, expected type:^2.") \
    X(kExponentTooBig, 32, "VKJSONParser/MIssingExponent=Number too big to be stored in double.") \
    X(kMissingExponent, 32, "VKJSONParser/MissingExponent=Miss exponent in number") \
    X(kMissingFractionPart, 32, "VKJSONParser/MissingFractionPart=Missing fraction part in number") \
    X(kMissingRequiredProperties, 32, "VKJSONParser/MissingRequiredProperties=Unable to find mandatory properties : ^1.") \
    X(kNumberTooBig, 32, "VKJSONParser/NumberTooBig=Number too big to be stored in double.") \
    X(kOpeningBracketNotFound, 32, "VKJSONParser/OpeningBracketNotFound=Unable to find VKJSON opening '{'.") \
    X(kTooDeepNesting, 32, "VKJSONParser/TooDeepNesting=ZT does not support VKJSON dataGroup with nesting more than ^1") \
    X(kIntermediateNodeNotGroupNode, 33, "InvalidZTDataPath/IntermediateNodeNotGroupNode=Node at path item:^1 is not of type dataGroup. All intermediate nodes must be of type dataGroup.") \
    X(kInvalidIndex, 33, "InvalidZTDataPath/InvalidIndex=Invalid node index, ^1 child nodes present for node at path item :^2. Input index : ^3.") \
    X(kInvalidNodeType, 33, "InvalidZTDataPath/InvalidNodeType=^1 not found at input path, Found node type: ^2.") \
    X(kLastNodeNotGroupNode, 33, "InvalidZTDataPath/LastNodeNotGroupNode=Leaf node is not a group node.") \
    X(kMatchNameNotFound, 33, "InvalidZTDataPath/MatchNameNotFound=No node found with match name : ^1.") \
    X(kMatchNameNotMatching, 33, "InvalidZTDataPath/MatchNameNotMatching=^1:Match name found for child Node at index ^2 for path item ^3,Input match name:^4.") \
    X(kMissingBothIndexAndMatchName, 33, "InvalidZTDataPath/MissingBothIndexAndMatchName=Either index or match name must be present, both are missing at path item ^1.") \
    X(kMissingOpeningBracket, 33, "InvalidZTDataPath/MissingOpeningOrClosingBracket=Missing ^1 at or after index :^2.") \
    X(kMissingRootInfo, 33, "InvalidZTDataPath/MissingRootInfo=Missing ZT_DataPath ROOT_INDEX or ROOT_MATCHNAME. Path must start with ROOT_INDEX or ROOT_MATCHNAME") \
    X(kMemoryNotAvailable, 34, "MemoryNotAvailable=Unable to allocate memory.") \
    X(kSampleMemoryNotAvailable, 34, "DynamicSample/MemoryNotAvailable=Unable to allocate memory for ^1.") \
    X(kForeignException, 34, "UnknownExceptionCaught=Unknown exception occurred.") \
    X(kSampleIdNotFound, 35, "SampleData/SampleIdNotFound=Data Outline does not contain any dynamic node for sample id : ^1.") \
    X(kInvalidSampleSetInfo, 36, "SampleData/InvalidSampleSetInfo=Invalid  dynamic node info in data outline for sample set:^1.Calculated sample set size is out of file offset range.") \
    X(kDuplicateSampleId, 37, "VKJSONParser/DynamicSample/DuplicateSampleId=Duplicate sample id found. Sample Id:^1 is assigned to more than one dynamic node in data outline.") \
    X(kSamplesNotFound, 38, "SampleData/SamplesNotFound=No dynamic sample data present for sample id : ^1.") \
    X(kInvalidSampleSetData, 39, "VKJSONParser/DynamicSample/InvalidSampleSetData=Invalid sample set data for sample id:^1. Either information in dataOutline is incorrect or sample set data is malformed.") \
    X(kInvalidPaddedStringLength, 39, "VKJSONParser/InvalidPaddedStringLength=Padded string length cannot be greater than max length.") \
    X(kMissingSampleProperty, 39, "VKJSONParser/MissingRequiredPropertyAtPath=Unable to find mandatory property:^1 at ^2.") \
    X(kInvalidArrayCount, 39, "SampleData/InvalidNumberArrayInvalidArrayCount=Number array does not contains enough elements at ^1.") \
    X(kInvalidSample, 39, "SampleData/InvalidSample=Invalid sample:^1") \
    X(kInvalidSampleTime, 39, "SampleData/InvalidSampleTime=Invalid sample time:^1") \
    X(kInvalidTimeValue, 39, "SampleData/InvalidSampleTime=Invalid time value for :^1.") \
    X(kInvalidTimeValueForId, 39, "SampleData/InvalidSampleTime=Invalid time value for sample id:^1.") \
    X(kInvalidSampleValue, 39, "SampleData/InvalidSampleValue=Invalid sample value:^1") \
    X(kDuplicateMatchName, 40, "VKJSONParser/DuplicateMatchName=Duplicate MatchName:^1 at ^2. MatchName must be unique for every node in \"dataOutline\".") \
    X(kNonSupportedFrameRate, 41, "VKJSONParser/NonSuppportedFrameRate=Only 29.97 and 59.94 drop frame rate supported.") \
    X(kInvalidMatchName, 42, "VKJSONParser/InvalidMatchName=Invalid ^1 at ^2. Not following VKJSON guidelines.") \
    X(kInvalidPropertyType, 43, "VKJSONParser/InvalidPropertyType=Invalid ^1 type, expected type:^2.") \
    X(kInvalidPropertyTypeAtPath, 43, "VKJSONParser/InvalidPropertyTypeAtPath=Invalid ^1 type, expected type:^2 at ^3.") \
    X(kInvalidSamplePropertyType, 43, "VKJSONParser/DynamicSample/InvalidPropertyType=Unable to find ^1, Invalid ^2 property, expected type : ^3 in dynamic set with sample id:^4.") \
    X(kInvalidPropertyValueAtPath, 44, "VKJSONParser/InvalidPropertyValueAtPath=Invalid value for ^1 at ^2, expected:^3.") \
    X(kTopPropertyNotTimeInfo, 44, "VKJSONParser/InvalidDynamicDataInfo/TopPropertyNotTimeInfo=First property of ^1 must be ^2, found ^3.") \
    X(kSyncTimeAndFrameMissing, 44, "VKJSONParser/InvalidSyncInfo/BothTSAndFNMissing=Invalid ^1, one of ^2 or ^3 must be present at ^4.") \
    X(kSyncTimeAndFramePresent, 44, "VKJSONParser/InvalidSyncInfo/BothTSAndFNPPresent=Invalid ^1, only one of ^2 or ^3 can be present at ^4.") \
    X(kMissingClosingBracket, 45, "InvalidZTDataPath/MissingOpeningOrClosingBracket=Missing ^1 at or after index :^2.") \
    X(kInvalidInfo, 46, "VKJSONParser/InvalidInfo=^1 can be present if and only if ^2 is set to ^3.") \
    X(kEmptyArray, 47, "VKJSONParser/EmptyArray=Invalid ^1, expected atleast 1 array item, found 0.") \
    X(kEmptyArrayAtPath, 47, "VKJSONParser/EmptyArrayAtPath=Invalid ^1, expected atleast 1 array item, found 0 at ^2.") \
    X(kWriterFailure, 48, "WriterFailure=Writer failure.") \
    X(kDynamicNodeNotPresent, 49, "VKJSONParser/DynamicSample/DynamicNodeNotPresent=No dynamic data node is present in data outline with sample id:^1.") \
    X(kEmptyFile, 54, "FileMapper/EmptyFile=Empty Input file.") \
    X(kWriteLargeRequest, 55, "File_IO/Write/LargeRequest=^1, request too large.") \
    X(kNoStreamCreated, 56, "NoStreamCreated=No stream created by Zentor.") \
    X(kInvalidStream, 57, "InvalidStream=VKJSON Stream is not created by this Zentor instance.") \
    X(kDirectoryDoesNotExist, 58, "DirectoryDoesNotExists=VKJSON output directory does not exists.") \
    X(kModuleLoadingFailed, 1021, "ZTPlugin/ModuleLoadingFailed=Can't load module.") \
    X(kPluginLoadFailure, 1021, "ZTPlugin/PluginLoadFailure=Plugin ^1 not loaded.") \
    X(kPluginNotLoaded, 1021, "ZTPlugin/PluginNotLoaded=Plugin not loaded.") \
    X(kPluginInitializeFailed, 1500, "ZTPlugin/PluginInitializeFailed=Initialization of plugin with id ^1 failed.") \
    X(kManifestParseFailed, 1503, "ZTPlugin/ManifestParseFailed=Manifest Parsing Failed.") \
    X(kMandatoryPropertyNotPresent, 1503, "ZTPlugin/MandatoryPropertyNotPresent=Mandatory property not present.") \
    X(kManifestPropertyType, 1504, "ZTPlugin/InvalidPropertyType=Invalid : ^1 type, expected type : ^2.") \
    X(kSchemaViolation, 1504, "ZTPlugin/SchemaViolation=Schema violation of Property: ^1.") \
    X(kPluginCheckFileFormat, 1506, "ZTPlugin/CheckFileFormat=Error in Plugin Check File Format of converter ^1 with id ^2.") \
    X(kInitializeSessionFailed, 1506, "ZTPlugin/IntialzeSessionFailed=Initialize Session Failed of converter ^1 with id ^2.") \
    X(kTerminatePluginFailed, 1506, "ZTPlugin/TerminatePluginFailed=Terminate of Plugin with id ^1 failed") \
    X(kConversionFailure, 1506, "ConversionFailure=File Cannot be converted.") \
    X(kPluginConverter, 1506, "ZTPlugin/Converter=Conversion to VKJSON using converter ^1 with id ^2 failed.") \
    X(kConverterFailure, 2009, "ConverterFailure=Internal converter failure") \
    X(kWriterFailureStream, 2011, "WriterFailure=Writer failure.") \
    X(kWriterFailureSyncTime, 2012, "WriterFailure=Writer failure.") \
    X(kWriterFailureDimensions, 2017, "WriterFailure=Writer failure.") \
    X(kWriterFailureRanges, 2018, "WriterFailure=Writer failure.")

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
