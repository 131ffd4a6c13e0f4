{ SPDX-License-Identifier: MIT }
{ The thirteen functions for Free Pascal.

  A point is an array[0..2] of Double, passed by its address: the compiler refuses one of
  another length. It is null only as P^ of a nil pointer, which must not be passed. An
  exception of the library ends the program, so WriteElb asks first. }
unit vesk;

{$mode objfpc}{$H+}

interface

type
  TPoint = array[0..2] of Double;

{ Opens 'vesk' + Name + '.dat' and closes what is open; False if the system refused. }
function OpenVesk(const Name: AnsiString): Boolean;
{ Opens the file of a path; False if it can't be made there. It appears when CloseVesk returns
  0, and what was there before stays until then: it grows under a name of its own in the
  current folder, where the library writes. Close a file before the next one, whose opening
  completes it without a word of what the system refused. }
function OpenVeskAt(const Path: AnsiString): Boolean;
{ Completes the file. Returns 0, or the reason why the system did not take all of it, a full
  disk for one: the file is not whole then, and one of a path does not appear. SysErrorMessage of SysUtils says it in words. }
function CloseVesk: LongInt;
{ False if N is not within 0 to 46655; its high digits are lost then. }
function SetHeader(const A, B: AnsiString; N: LongInt): Boolean;
{ Returns False and writes nothing if S is longer than 512 bytes: it would not fit. }
function WriteTxt(const P1, P2, P3: TPoint; D1, D2: Double; I1, I2: LongInt;
  const S: AnsiString): Boolean;
{ Returns 0 and writes nothing if P2 or P3 is at P0: the bend has no direction then. }
function WriteElb(const P0, P1, P2, P3: TPoint; D: Double): LongInt;

procedure WritePnt(constref P: TPoint); cdecl; external 'CVeskDll' name 'vk_writePnt';
procedure WriteSeg(constref P1, P2: TPoint); cdecl; external 'CVeskDll' name 'vk_writeSeg';
procedure WriteTri(constref P1, P2, P3: TPoint); cdecl; external 'CVeskDll' name 'vk_writeTri';
procedure WriteQua(constref P1, P2, P3, P4: TPoint); cdecl; external 'CVeskDll' name 'vk_writeQua';
procedure WriteBox(constref P0, P1, P2, P3: TPoint); cdecl; external 'CVeskDll' name 'vk_writeBox';
procedure WriteRed(constref P0, P1, P2, P3, P4, P5, P6, P7: TPoint); cdecl;
  external 'CVeskDll' name 'vk_writeRed';
function WriteCyl(constref P1, P2: TPoint; D: Double): LongInt; cdecl;
  external 'CVeskDll' name 'vk_writeCyl';
function WriteCon(constref P1, P2: TPoint; D1, D2: Double): LongInt; cdecl;
  external 'CVeskDll' name 'vk_writeCon';
function WriteTor(constref P0, P1, P2: TPoint; D: Double): LongInt; cdecl;
  external 'CVeskDll' name 'vk_writeTor';

implementation

uses
  Classes, SysUtils, initc, Math;

const
  InputOutput = 5;  { EIO }

var
  { Of a file with a path: where it is to appear and where it grows until then. }
  Target, Temporary: AnsiString;

function vk_openVesk(Name: PAnsiChar): LongInt; cdecl; external 'CVeskDll';
function vk_setHeader(A, B: PAnsiChar; N: LongInt): LongInt; cdecl; external 'CVeskDll';
procedure vk_writeTxt(constref P1, P2, P3: TPoint; D1, D2: Double; I1, I2: LongInt;
  S: PAnsiChar); cdecl; external 'CVeskDll';
function vk_writeElb(constref P0, P1, P2, P3: TPoint; D: Double): LongInt; cdecl;
  external 'CVeskDll';

function PartOf(const Path: AnsiString): AnsiString;
begin
  Result := Path + '.' + IntToStr(GetProcessID) + '.part';
end;

{ A name of which no file is in the current folder. }
function FreeName: AnsiString;
var
  Number: LongInt = 0;
begin
  repeat
    Result := '-' + IntToStr(GetProcessID) + '-' + IntToStr(Number);
    Inc(Number);
  until not FileExists('vesk' + Result + '.dat');
end;

{ Replaces a file at once by another one beside it. }
function Replaced(const Source, Path: AnsiString): Boolean;
begin
  {$ifdef windows}
  DeleteFile(Path);
  {$endif}
  Result := RenameFile(Source, Path);
end;

function Copied(const Source, Path: AnsiString): Boolean;
var
  Input, Output: TFileStream;
begin
  Result := False;
  try
    Input := TFileStream.Create(Source, fmOpenRead);
    try
      Output := TFileStream.Create(Path, fmCreate);
      try
        Output.CopyFrom(Input, 0);
        Result := True;
      finally
        Output.Free;
      end;
    finally
      Input.Free;
    end;
  except
    on EStreamError do Result := False;
  end;
end;

{ Across file systems by a copy beside the target. Returns 0 or the reason of a failure, which
  leaves the file where it was. }
function Moved: LongInt;
begin
  Result := 0;
  if Replaced(Temporary, Target) then Exit;
  if Copied(Temporary, PartOf(Target)) and Replaced(PartOf(Target), Target) then
  begin
    DeleteFile(Temporary);
    Exit;
  end;
  Result := GetLastOSError;
  if Result = 0 then Result := InputOutput;
  DeleteFile(PartOf(Target));
end;

function OpenVesk(const Name: AnsiString): Boolean;
begin
  if Temporary <> '' then CloseVesk;
  Result := vk_openVesk(PAnsiChar(Name)) = 1;
end;

function OpenVeskAt(const Path: AnsiString): Boolean;
var
  Name: AnsiString;
  Handle: THandle;
begin
  Result := False;
  if DirectoryExists(Path) then Exit;
  Handle := FileCreate(PartOf(Path));
  if Handle = THandle(-1) then Exit;
  FileClose(Handle);
  DeleteFile(PartOf(Path));
  Name := FreeName;
  if not OpenVesk(Name) then Exit;
  Target := ExpandFileName(Path);
  Temporary := ExpandFileName('vesk' + Name + '.dat');
  Result := True;
end;

function CloseVesk: LongInt;
begin
  cerrno := 0;
  vk_openVesk(nil);
  Result := cerrno;
  if Temporary = '' then Exit;
  if Result = 0 then Result := Moved
  else DeleteFile(Temporary);
  Temporary := '';
end;

function SetHeader(const A, B: AnsiString; N: LongInt): Boolean;
begin
  Result := vk_setHeader(PAnsiChar(A), PAnsiChar(B), N) = 1;
end;

function WriteTxt(const P1, P2, P3: TPoint; D1, D2: Double; I1, I2: LongInt;
  const S: AnsiString): Boolean;
begin
  Result := Length(S) <= 512;
  if Result then vk_writeTxt(P1, P2, P3, D1, D2, I1, I2, PAnsiChar(S));
end;

function Distance(const A, B: TPoint): Double;
begin
  Result := Norm([A[0] - B[0], A[1] - B[1], A[2] - B[2]]);
end;

function WriteElb(const P0, P1, P2, P3: TPoint; D: Double): LongInt;
begin
  Result := 0;
  if (Distance(P0, P2) < 1e-12) or (Distance(P0, P3) < 1e-12) then Exit;
  Result := vk_writeElb(P0, P1, P2, P3, D);
end;

initialization
  { Pascal stops at a division by zero or an infinity; the library counts on the usual
    floating point, which goes on. }
  SetExceptionMask([exInvalidOp, exDenormalized, exZeroDivide, exOverflow, exUnderflow, exPrecision]);

end.
