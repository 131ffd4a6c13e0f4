{ SPDX-License-Identifier: MIT }
{ Files with a path: whole or not at all.

      paths TARGET [full]     as check-paths runs it }
program paths;

{$mode objfpc}{$H+}

uses
  SysUtils, vesk;

procedure Expect(Holds: Boolean; const What: AnsiString);
begin
  if Holds then Exit;
  WriteLn(What);
  Halt(1);
end;

procedure ExpectLine(const Line: AnsiString);
var
  Source: TextFile;
  Found: AnsiString;
begin
  AssignFile(Source, ParamStr(1));
  Reset(Source);
  ReadLn(Source, Found);
  CloseFile(Source);
  Expect(Found = Line, 'the file holds: ' + Found);
end;

procedure WriteAt(X: Double);
var
  P: TPoint = (0, 2, 3);
begin
  P[0] := X;
  WritePnt(P);
end;

procedure FullDisk;
var
  N: LongInt;
begin
  Expect(OpenVeskAt(ParamStr(1)), 'OpenVeskAt');
  for N := 1 to 100 do WriteAt(N);
  Expect(SysErrorMessage(CloseVesk) = 'File too large', 'a full disk is not told');
  ExpectLine('before');
end;

begin
  if ParamCount = 2 then
  begin
    FullDisk;
    Halt(0);
  end;
  Expect(not OpenVeskAt('none/a'), 'a folder that is not there is not told');
  Expect(not OpenVeskAt('.'), 'a folder is taken for a file');
  Expect(OpenVeskAt(ParamStr(1)), 'OpenVeskAt');
  WriteAt(1);
  ExpectLine('before');
  Expect(CloseVesk = 0, 'CloseVesk');
  ExpectLine('                 00l pt 1 2 3');
  Expect(OpenVeskAt(ParamStr(1)), 'OpenVeskAt');
  WriteAt(4);
  Expect(OpenVesk('-next'), 'OpenVesk');  { completes the one before }
  Expect(CloseVesk = 0, 'CloseVesk');
  ExpectLine('                 00l pt 4 2 3');
end.
