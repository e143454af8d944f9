// Entry point of the client.
int main()
{
    return 0;
}
