! SPDX-License-Identifier: MIT
! The thirteen functions for Fortran.
!
! A point is a value of type(point), three numbers side by side: it cannot be of another
! length, and it is null only if it is a pointer or an allocatable without a target, which
! must not be passed. An exception of the library ends the program, so write_elb asks first.
module vesk
  use, intrinsic :: iso_c_binding, only: c_associated, c_char, c_double, c_f_pointer, c_int, c_loc, &
                                         c_null_char, c_null_ptr, c_ptr, c_size_t
  implicit none
  private
  public :: point, open_vesk, open_vesk_at, close_vesk, set_header, write_pnt, write_seg, write_tri, &
            write_qua, write_txt, write_box, write_red, write_cyl, write_con, write_tor, write_elb, &
            reason_text

  type, bind(C) :: point
    real(c_double) :: x, y, z
  end type point

  integer, parameter :: across_file_systems = 18, input_output = 5  ! EXDEV, EIO

  ! Of a file with a path: where it is to appear and where it grows until then.
  character(len=:), allocatable :: target_path, temporary

  ! name= keeps the capitals, which Fortran would lower.
  interface
    function vk_open(name) bind(C, name="vk_openVesk") result(opened)
      import :: c_int, c_ptr
      type(c_ptr), value :: name  ! null closes
      integer(c_int) :: opened
    end function vk_open

    function vk_header(a, b, n) bind(C, name="vk_setHeader") result(fits)
      import :: c_char, c_int
      character(kind=c_char), intent(in) :: a(*), b(*)
      integer(c_int), value :: n
      integer(c_int) :: fits
    end function vk_header

    ! Where the C library keeps the reason of a failure; "_errno" on Windows.
    function c_errno() bind(C, name="__errno_location") result(address)
      import :: c_ptr
      type(c_ptr) :: address
    end function c_errno

    function c_strerror(reason) bind(C, name="strerror") result(text)
      import :: c_int, c_ptr
      integer(c_int), value :: reason
      type(c_ptr) :: text
    end function c_strerror

    function c_getpid() bind(C, name="getpid") result(process)
      import :: c_int
      integer(c_int) :: process
    end function c_getpid

    function c_getcwd(text, length) bind(C, name="getcwd") result(address)
      import :: c_char, c_ptr, c_size_t
      character(kind=c_char), intent(out) :: text(*)
      integer(c_size_t), value :: length
      type(c_ptr) :: address
    end function c_getcwd

    function c_rename(from, to) bind(C, name="rename") result(failed)
      import :: c_char, c_int
      character(kind=c_char), intent(in) :: from(*), to(*)
      integer(c_int) :: failed
    end function c_rename

    function c_remove(name) bind(C, name="remove") result(failed)
      import :: c_char, c_int
      character(kind=c_char), intent(in) :: name(*)
      integer(c_int) :: failed
    end function c_remove

    function c_strlen(text) bind(C, name="strlen") result(length)
      import :: c_ptr, c_size_t
      type(c_ptr), value :: text
      integer(c_size_t) :: length
    end function c_strlen

    subroutine write_pnt(p) bind(C, name="vk_writePnt")
      import :: point
      type(point), intent(in) :: p
    end subroutine write_pnt

    subroutine write_seg(p1, p2) bind(C, name="vk_writeSeg")
      import :: point
      type(point), intent(in) :: p1, p2
    end subroutine write_seg

    subroutine write_tri(p1, p2, p3) bind(C, name="vk_writeTri")
      import :: point
      type(point), intent(in) :: p1, p2, p3
    end subroutine write_tri

    subroutine write_qua(p1, p2, p3, p4) bind(C, name="vk_writeQua")
      import :: point
      type(point), intent(in) :: p1, p2, p3, p4
    end subroutine write_qua

    subroutine vk_txt(p1, p2, p3, d1, d2, i1, i2, s) bind(C, name="vk_writeTxt")
      import :: c_char, c_double, c_int, point
      type(point), intent(in) :: p1, p2, p3
      real(c_double), value :: d1, d2
      integer(c_int), value :: i1, i2
      character(kind=c_char), intent(in) :: s(*)
    end subroutine vk_txt

    subroutine write_box(p0, p1, p2, p3) bind(C, name="vk_writeBox")
      import :: point
      type(point), intent(in) :: p0, p1, p2, p3
    end subroutine write_box

    subroutine write_red(p0, p1, p2, p3, p4, p5, p6, p7) bind(C, name="vk_writeRed")
      import :: point
      type(point), intent(in) :: p0, p1, p2, p3, p4, p5, p6, p7
    end subroutine write_red

    function write_cyl(p1, p2, d) bind(C, name="vk_writeCyl") result(lines)
      import :: c_double, c_int, point
      type(point), intent(in) :: p1, p2
      real(c_double), value :: d
      integer(c_int) :: lines
    end function write_cyl

    function write_con(p1, p2, d1, d2) bind(C, name="vk_writeCon") result(lines)
      import :: c_double, c_int, point
      type(point), intent(in) :: p1, p2
      real(c_double), value :: d1, d2
      integer(c_int) :: lines
    end function write_con

    function write_tor(p0, p1, p2, d) bind(C, name="vk_writeTor") result(lines)
      import :: c_double, c_int, point
      type(point), intent(in) :: p0, p1, p2
      real(c_double), value :: d
      integer(c_int) :: lines
    end function write_tor

    function vk_elb(p0, p1, p2, p3, d) bind(C, name="vk_writeElb") result(lines)
      import :: c_double, c_int, point
      type(point), intent(in) :: p0, p1, p2, p3
      real(c_double), value :: d
      integer(c_int) :: lines
    end function vk_elb
  end interface

contains

  ! Opens "vesk" // name // ".dat" and closes what is open; .false. if the system refused.
  logical function open_vesk(name)
    character(len=*), intent(in) :: name
    character(kind=c_char, len=:), allocatable, target :: text
    integer :: reason
    if (allocated(temporary)) reason = close_vesk()
    text = trim(name) // c_null_char
    open_vesk = vk_open(c_loc(text)) == 1
  end function open_vesk

  ! Opens the file of a path; .false. if it can't be made there. It appears when close_vesk
  ! returns 0, and what was there before stays until then: it grows under a name of its own
  ! in the current folder, where the library writes. Close a file before the next one, whose
  ! opening completes it without a word of what the system refused.
  logical function open_vesk_at(path)
    character(len=*), intent(in) :: path
    character(len=:), allocatable :: name
    character(kind=c_char) :: folder(4096)
    integer :: unit, failed
    open_vesk_at = .false.
    open (newunit=unit, file=part_of(trim(path)), status="replace", iostat=failed)
    if (failed /= 0) return
    close (unit, status="delete")
    if (.not. c_associated(c_getcwd(folder, size(folder, kind=c_size_t)))) return
    name = free_name()
    if (.not. open_vesk(name)) return
    temporary = text_of(folder) // "/vesk" // name // ".dat"
    target_path = trim(path)
    if (path(1:1) /= "/") target_path = text_of(folder) // "/" // trim(path)
    open_vesk_at = .true.
  end function open_vesk_at

  ! Completes the file. Returns 0, or the reason why the system did not take all of it, a
  ! full disk for one: the file is not whole then, and one of a path does not appear.
  ! reason_text says it in words.
  integer function close_vesk()
    integer(c_int) :: ignored
    integer(c_int), pointer :: errno
    call c_f_pointer(c_errno(), errno)
    errno = 0
    ignored = vk_open(c_null_ptr)
    close_vesk = errno
    if (.not. allocated(temporary)) return
    if (close_vesk == 0) then
      close_vesk = moved(temporary, target_path)
    else
      ignored = c_remove(temporary // c_null_char)
    end if
    deallocate (temporary)
  end function close_vesk

  ! Moves a file, across file systems by a copy beside the target, which is replaced at once.
  ! Returns 0 or the reason of a failure, which leaves the file where it was.
  integer function moved(from, to)
    character(len=*), intent(in) :: from, to
    integer(c_int), pointer :: errno
    integer(c_int) :: ignored
    call c_f_pointer(c_errno(), errno)
    moved = 0
    if (c_rename(from // c_null_char, to // c_null_char) == 0) return
    moved = errno
    if (moved /= across_file_systems) return
    moved = copied(from, part_of(to))
    if (moved == 0) then
      if (c_rename(part_of(to) // c_null_char, to // c_null_char) /= 0) moved = errno
    end if
    if (moved /= 0) then
      ignored = c_remove(part_of(to) // c_null_char)
    else
      ignored = c_remove(from // c_null_char)
    end if
  end function moved

  integer function copied(from, to)
    character(len=*), intent(in) :: from, to
    integer, parameter :: most = 65536
    character(len=:), allocatable :: block
    integer :: source, sink, left, failed(5)
    failed = 0
    open (newunit=source, file=from, access="stream", form="unformatted", action="read", &
          status="old", iostat=failed(1))
    open (newunit=sink, file=to, access="stream", form="unformatted", status="replace", &
          iostat=failed(2))
    inquire (file=from, size=left)
    do while (left > 0 .and. all(failed == 0))
      allocate (character(len=min(left, most)) :: block)
      read (source, iostat=failed(3)) block
      write (sink, iostat=failed(4)) block
      left = left - len(block)
      deallocate (block)
    end do
    if (failed(1) == 0) close (source)
    if (failed(2) == 0) close (sink, iostat=failed(5))
    copied = merge(0, input_output, all(failed == 0))
  end function copied

  ! A name of which no file is in the current folder.
  function free_name() result(name)
    character(len=:), allocatable :: name
    character(len=40) :: text
    integer :: number
    logical :: taken
    do number = 0, huge(number) - 1
      write (text, '("-", i0, "-", i0)') c_getpid(), number
      name = trim(text)
      inquire (file="vesk" // name // ".dat", exist=taken)
      if (.not. taken) return
    end do
  end function free_name

  function part_of(path) result(part)
    character(len=*), intent(in) :: path
    character(len=:), allocatable :: part
    character(len=20) :: process
    write (process, '(".", i0)') c_getpid()
    part = path // trim(process) // ".part"
  end function part_of

  ! The letters before the zero.
  function text_of(letters) result(text)
    character(kind=c_char), intent(in) :: letters(:)
    character(len=:), allocatable :: text
    integer :: i
    allocate (character(len=findloc(letters, c_null_char, dim=1) - 1) :: text)
    do i = 1, len(text)
      text(i:i) = letters(i)
    end do
  end function text_of

  function reason_text(reason) result(text)
    integer, intent(in) :: reason
    character(len=:), allocatable :: text
    character(kind=c_char), pointer :: letters(:)
    type(c_ptr) :: address
    integer :: i
    address = c_strerror(int(reason, c_int))
    call c_f_pointer(address, letters, [c_strlen(address)])
    allocate (character(len=size(letters)) :: text)
    do i = 1, size(letters)
      text(i:i) = letters(i)
    end do
  end function reason_text

  ! .false. if n is not within 0 to 46655; its high digits are lost then.
  logical function set_header(a, b, n)
    character(len=*), intent(in) :: a, b
    integer, intent(in) :: n
    set_header = vk_header(a // c_null_char, b // c_null_char, int(n, c_int)) == 1
  end function set_header

  ! Blanks at the end of the text are not written; more than 512 bytes do not fit.
  subroutine write_txt(p1, p2, p3, d1, d2, i1, i2, s)
    type(point), intent(in) :: p1, p2, p3
    real(c_double), intent(in) :: d1, d2
    integer, intent(in) :: i1, i2
    character(len=*), intent(in) :: s
    if (len_trim(s) > 512) error stop "write_txt: more than 512 bytes"
    call vk_txt(p1, p2, p3, d1, d2, int(i1, c_int), int(i2, c_int), trim(s) // c_null_char)
  end subroutine write_txt

  ! Returns 0 and writes nothing if p2 or p3 is at p0: the bend has no direction then.
  integer function write_elb(p0, p1, p2, p3, d)
    type(point), intent(in) :: p0, p1, p2, p3
    real(c_double), intent(in) :: d
    write_elb = 0
    if (distance(p0, p2) < 1e-12_c_double .or. distance(p0, p3) < 1e-12_c_double) return
    write_elb = vk_elb(p0, p1, p2, p3, d)
  end function write_elb

  real(c_double) function distance(a, b)
    type(point), intent(in) :: a, b
    distance = norm2([a%x - b%x, a%y - b%y, a%z - b%z])
  end function distance

end module vesk
