// Entry point of the companion service.
int main()
{
    return 0;
}
