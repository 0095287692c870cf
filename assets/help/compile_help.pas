// SPDX-License-Identifier: MIT
{ Compiles the help:  compile_help OUT.chm FOLDER TITLE FIRSTPAGE CONTENTS.hhc CONTEXTS.txt FILE...
  FOLDER holds the files; CONTEXTS.txt has one line for each context number: the number, a blank, the place.

  Help compilers write the time into the file, and some of them the folders of the computer they ran on. This one writes
  neither: the same pages give the same file. In place of the time it puts a seal, by which the program knows an undamaged
  help file: the CRC-32 of the whole file with these four bytes taken as zero. }
program compile_help;
{$mode objfpc}{$H+}
uses cwstring, Classes, SysUtils, chmwriter;

const
  SealAt = 16;
  FirstFileParameter = 7;

type
  TCompiler = class
  private
    FFolder, FContents: string;
    FWriter: TChmWriter;
    function GetData(const DataName: string; out PathInChm: string; out FileName: string;
                     var Stream: TStream): Boolean;
    procedure AddContents(Sender: TObject);
    procedure AddContexts(const ListName: string);
  public
    procedure Compile(const OutName, Title, FirstPage, ContextList: string);
  end;

function TCompiler.GetData(const DataName: string; out PathInChm: string; out FileName: string;
                           var Stream: TStream): Boolean;
begin
  TMemoryStream(Stream).LoadFromFile(FFolder + '/' + DataName);
  FileName := ExtractFileName(DataName);
  PathInChm := '/' + ExtractFilePath(DataName);
  Result := False;
end;

procedure TCompiler.AddContents(Sender: TObject);
var
  Data: TMemoryStream;
begin
  Data := TMemoryStream.Create;
  Data.LoadFromFile(FFolder + '/' + FContents);
  FWriter.AppendTOC(Data);
end;

procedure TCompiler.AddContexts(const ListName: string);
var
  Lines: TStringList;
  Blank, Line: Integer;
begin
  Lines := TStringList.Create;
  Lines.LoadFromFile(ListName);
  for Line := 0 to Lines.Count - 1 do
  begin
    Blank := Pos(' ', Lines[Line]);
    if Blank > 0 then
      FWriter.AddContext(StrToInt(Copy(Lines[Line], 1, Blank - 1)), Trim(Copy(Lines[Line], Blank + 1, MaxInt)));
  end;
  Lines.Free;
end;

procedure TCompiler.Compile(const OutName, Title, FirstPage, ContextList: string);
var
  Output: TFileStream;
  Parameter: Integer;
begin
  Output := TFileStream.Create(OutName, fmCreate);
  FWriter := TChmWriter.Create(Output, False);
  FWriter.OnGetFileData := @GetData;
  FWriter.OnLastFile := @AddContents;
  FWriter.Title := Title;
  FWriter.DefaultPage := FirstPage;
  FWriter.TocName := FContents;
  FWriter.FullTextSearch := True;
  FWriter.LocaleID := $0409;
  for Parameter := FirstFileParameter to ParamCount do
    FWriter.FilesToCompress.Add(ParamStr(Parameter));
  AddContexts(ContextList);
  FWriter.Execute;
  FWriter.Free;
  Output.Free;
end;

function Crc32(const Data: TMemoryStream): LongWord;
var
  At: Int64;
  Bit: Integer;
begin
  Result := $FFFFFFFF;
  for At := 0 to Data.Size - 1 do
  begin
    Result := Result xor PByte(Data.Memory)[At];
    for Bit := 1 to 8 do
      if Odd(Result) then
        Result := (Result shr 1) xor LongWord($EDB88320)
      else
        Result := Result shr 1;
  end;
  Result := not Result;
end;

{ The time of day stands right before the compiler's name in the file's uncompressed description: the code 10, the
  length 4, the time, then the code and the length of the name. }
procedure RemoveTimeOfDay(const Data: TMemoryStream);
const
  Name: string = 'HHA Version';
  NameLead = 4;
  TimeSize = 4;
  TimeLead: array[0..3] of Byte = (10, 0, 4, 0);
var
  Bytes: PByte;
  At: Int64;
begin
  Bytes := PByte(Data.Memory);
  for At := NameLead + TimeSize + SizeOf(TimeLead) to Data.Size - Length(Name) do
    if CompareMem(Bytes + At, PChar(Name), Length(Name)) and
       CompareMem(Bytes + At - NameLead - TimeSize - SizeOf(TimeLead), @TimeLead, SizeOf(TimeLead)) then
      FillChar(Bytes[At - NameLead - TimeSize], TimeSize, 0);
end;

procedure Seal(const FileName: string);
var
  Data: TMemoryStream;
  Number: LongWord;
begin
  Data := TMemoryStream.Create;
  Data.LoadFromFile(FileName);
  RemoveTimeOfDay(Data);
  FillChar(PByte(Data.Memory)[SealAt], SizeOf(Number), 0);
  Number := NtoLE(Crc32(Data));
  Move(Number, PByte(Data.Memory)[SealAt], SizeOf(Number));
  Data.SaveToFile(FileName);
  Data.Free;
end;

var
  Compiler: TCompiler;
begin
  if ParamCount < FirstFileParameter then
  begin
    WriteLn(StdErr, 'usage: compile_help OUT.chm FOLDER TITLE FIRSTPAGE CONTENTS.hhc CONTEXTS.txt FILE...');
    Halt(2);
  end;
  Compiler := TCompiler.Create;
  Compiler.FFolder := ParamStr(2);
  Compiler.FContents := ParamStr(5);
  Compiler.Compile(ParamStr(1), ParamStr(3), ParamStr(4), ParamStr(6));
  Compiler.Free;
  Seal(ParamStr(1));
end.
